// What a match is replaced with: plain text, or a text with the groups of the match in it.
#pragma once

#include "platform/control/text_search.h"

#include <QList>

namespace control {

class ReplacementText
{
public:
    // For an expression: "$1", "${1}", "${name}", "\1" are what the groups took and "$0" and "$&" the whole
    // match; "$$" is a dollar sign; "\n" and "\r\n" are a line end as given, "\r", "\t", "\xHH", "\x{HHHH}"
    // and "\\" are as usual; "\U" and "\L" turn what follows into upper or lower case up to "\E", "\u" and
    // "\l" one character.
    ReplacementText(const QString &text, const TextSearch &search, QByteArrayView lineEnd);

    const std::optional<PatternFault> &fault() const { return fault_; }

    // Appends what replaces the match that the search's next() found last in the text.
    void appendTo(QByteArray &result, QByteArrayView text, const TextSearch &search) const;

private:
    enum class Kind
    {
        Bytes,
        Group,
        Upper,
        Lower,
        AsIs,
        UpperOne,
        LowerOne
    };
    struct Piece
    {
        Kind kind = Kind::Bytes;
        QByteArray bytes;
        int group = 0;
    };

    void add(QStringView text);
    qsizetype readDollar(QStringView rest, const TextSearch &search);
    qsizetype readBackslash(QStringView rest, const TextSearch &search, QByteArrayView lineEnd);
    qsizetype readNumber(QStringView rest, const TextSearch &search);
    qsizetype readHex(QStringView rest);
    void addGroup(int number, const TextSearch &search);
    qsizetype refuse(const QString &message);

    QList<Piece> pieces_;
    std::optional<PatternFault> fault_;
};

} // namespace control
