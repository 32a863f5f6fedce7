#include "platform/dom/xml11.h"

namespace dom {

namespace {

constexpr QByteArrayView nextLine = "\xC2\x85";
constexpr QByteArrayView lineSeparator = "\xE2\x80\xA8";

// The reference to a character of XML 1.1 alone that begins at an ampersand becomes one to a tab.
void replaceReference(QByteArray &text, qsizetype ampersand)
{
    const qsizetype semicolon = text.indexOf(';', ampersand);
    if (semicolon < 0 || semicolon - ampersand > 32 || text[ampersand + 1] != '#')
        return;
    const bool hex = text[ampersand + 2] == 'x';
    const qsizetype digits = ampersand + (hex ? 3 : 2);
    bool ok = false;
    const uint number = text.mid(digits, semicolon - digits).toUInt(&ok, hex ? 16 : 10);
    if (!ok || number == 0 || number >= ' ' || number == '\t' || number == '\n' || number == '\r')
        return;
    for (qsizetype at = digits; at < semicolon; ++at)
        text[at] = at == semicolon - 1 ? '9' : '0';
}

void blank(QByteArray &text, QByteArrayView what)
{
    for (qsizetype at = text.indexOf(what); at >= 0; at = text.indexOf(what, at + what.size()))
        text.replace(at, what.size(), QByteArray(what.size(), ' '));
}

} // namespace

std::optional<qsizetype> findRestrictedCharacter(QByteArrayView utf8)
{
    for (qsizetype i = 0; i < utf8.size(); ++i) {
        const auto byte = uchar(utf8[i]);
        if (byte == 0x7F)
            return i;
        const auto next = byte == 0xC2 && i + 1 < utf8.size() ? uchar(utf8[i + 1]) : uchar(0);
        if (next >= 0x80 && next <= 0x9F && next != 0x85)
            return i;
    }
    return std::nullopt;
}

QByteArray asVersion10(QByteArrayView utf8, LineEnds own)
{
    QByteArray text = utf8.toByteArray();
    if (own == LineEnds::AsBlanks) {
        blank(text, nextLine);
        blank(text, lineSeparator);
    }
    for (qsizetype at = text.indexOf("&#"); at >= 0; at = text.indexOf("&#", at + 2))
        replaceReference(text, at);
    return text;
}

} // namespace dom
