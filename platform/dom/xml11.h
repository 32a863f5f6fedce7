// XML 1.1, in which other line ends count and nearly every control character may be named by its number.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

namespace dom {

// The first control character that XML 1.1 allows by its number alone and that stands there itself; nothing
// where there is none.
std::optional<qsizetype> findRestrictedCharacter(QByteArrayView utf8);

enum class LineEnds
{
    AsBlanks,
    AsTheyAre
};

// The text with every spelling that 1.1 alone allows replaced by one that both versions do, byte for byte
// in the same place: it is well-formed by the rules of 1.0 exactly when the text is by those of 1.1; but for
// the line ends that only 1.1 knows, when they stay as they are.
QByteArray asVersion10(QByteArrayView utf8, LineEnds own);

} // namespace dom
