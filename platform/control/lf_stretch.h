// A stretch of a text as expressions see it: every CR LF is one LF, so that nothing matches half a line end
// and an expression means the same whatever the text's lines end with. Only texts that have CR LF are copied,
// and of those only the stretch.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <vector>

namespace control {

class LfStretch
{
public:
    enum class Lines
    {
        Unified,
        AsTheyAre // the places are the same on both sides
    };

    // From start to before end, neither between CR and LF. The text stays where it is meanwhile.
    LfStretch(QByteArrayView text, qsizetype start, qsizetype end, Lines lines = Lines::Unified);

    // What an expression is to look at.
    QByteArrayView bytes() const { return copied_ ? QByteArrayView(copy_) : original_; }
    // Where it begins and ends in the text.
    qsizetype start() const { return start_; }
    qsizetype end() const { return start_ + original_.size(); }

    // The place in the text of one in the bytes: never between CR and LF.
    qsizetype inText(qsizetype place) const;
    // The other way; what is between CR and LF counts as behind both.
    qsizetype inBytes(qsizetype place) const;

private:
    QByteArrayView original_;
    qsizetype start_;
    bool copied_ = false;
    QByteArray copy_;
    std::vector<qsizetype> ends_; // where in the copy an LF stands for CR LF, in order
};

} // namespace control
