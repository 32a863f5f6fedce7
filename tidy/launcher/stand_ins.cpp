#include "tidy/launcher/stand_ins.h"

#include <algorithm>

namespace launcher {

// The dot keeps a text before a stand-in from beginning another.
StandIns::StandIns(QByteArrayView text)
{
    int tried = 0;
    do {
        key_ = '_' + QByteArray::number(tried++) + '.';
    } while (text.contains(key_));
}

QByteArray StandIns::word(qsizetype number) const { return key_ + QByteArray::number(number) + '_'; }

std::optional<StandIns::Found> StandIns::next(QByteArrayView text, qsizetype from, qsizetype bound) const
{
    for (qsizetype at = from; (at = text.indexOf(key_, at)) >= 0; at += key_.size()) {
        const qsizetype digits = at + key_.size();
        const qsizetype end = text.indexOf('_', digits);
        bool known = false;
        const QByteArrayView inside = text.sliced(digits, std::max<qsizetype>(end - digits, 0));
        const qsizetype number = inside.toByteArray().toLongLong(&known);
        if (known && number >= 0 && number < bound)
            return Found{at, end + 1, number};
    }
    return std::nullopt;
}

QByteArray lineEndsOf(QByteArrayView text)
{
    QByteArray ends;
    for (const char c : text) {
        if (c == '\n' || c == '\r')
            ends += c;
    }
    return ends;
}

QByteArray withLineEnds(QByteArray text, const QByteArray &lineEnd)
{
    if (lineEnd.isEmpty() || !(text.contains('\n') || text.contains('\r')))
        return text;
    return text.replace("\r\n", "\n").replace('\r', '\n').replace("\n", lineEnd);
}

QByteArray withPlainReferences(QByteArray text) { return text.replace("&;", "&amp;;"); }

QByteArray escaped(QByteArray text)
{
    return text.replace('&', "&amp;").replace('<', "&lt;").replace('>', "&gt;");
}

} // namespace launcher
