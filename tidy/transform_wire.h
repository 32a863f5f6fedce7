// What the editor and the program that carries out style sheets tell each other: blocks of bytes, each with
// its length before it.
#pragma once

#include "tidy/transform.h"

#include <optional>

namespace tidy {

// The one block that the program is given.
QByteArray jobBlock(const TransformJob &job);

// The blocks that it answers with: messages as they come, and the outcome.
QByteArray messageBlock(const TransformMessage &message);
QByteArray outcomeBlock(const Transformation &done);

// The length that begins a block, in bytes of the block behind it.
constexpr qsizetype lengthBytes = 8;
qint64 blockLength(const QByteArray &length);

// A job out of a block without its length; nothing when it is none.
std::optional<TransformJob> jobIn(const QByteArray &block);

// Puts what comes together again.
class TransformAnswer
{
public:
    // Takes the next bytes, cut anywhere; false when they are no answer.
    bool take(const QByteArray &bytes);

    // The outcome has come.
    bool isWhole() const { return whole_; }

    // What has come so far.
    Transformation &transformation() { return done_; }

private:
    bool takeBlock(const QByteArray &block);

    QByteArray waiting_;
    Transformation done_;
    bool whole_ = false;
};

} // namespace tidy
