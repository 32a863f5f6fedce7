#include "platform/dom/characters.h"

#include "platform/dom/names.h"

namespace dom {

namespace {

constexpr qsizetype expansionLimit = 1 << 20; // bytes that the entities of one attribute may grow to
constexpr int depthLimit = 40; // entities within entities

struct Predefined
{
    const char *name;
    char character;
};

constexpr Predefined predefined[] = {{"lt", '<'}, {"gt", '>'}, {"amp", '&'}, {"quot", '"'}, {"apos", '\''}};

// Copies raw with its line ends turned into lineFeed, and tabs and line feeds too when they count as blanks.
class Decoder
{
public:
    Decoder(const Entities *entities, bool inAttribute) : entities_(entities), inAttribute_(inAttribute) { }

    void run(QByteArrayView raw, int depth = 0)
    {
        for (qsizetype i = 0; i < raw.size();) {
            const char c = raw[i];
            if (c == '&') {
                i = reference(raw, i, depth);
            } else if (c == '\r') {
                out += inAttribute_ ? ' ' : '\n';
                i += i + 1 < raw.size() && raw[i + 1] == '\n' ? 2 : 1;
            } else {
                out += inAttribute_ && isBlank(c) ? ' ' : c;
                ++i;
            }
        }
    }

    QByteArray out;

private:
    qsizetype reference(QByteArrayView raw, qsizetype at, int depth)
    {
        const qsizetype semicolon = raw.indexOf(';', at);
        if (semicolon < 0) {
            out += raw[at];
            return at + 1;
        }
        const QByteArrayView name = raw.sliced(at + 1, semicolon - at - 1);
        if (const auto character = characterOf(name))
            out += textOf(*character).toUtf8();
        else
            entity(name, raw.sliced(at, semicolon + 1 - at), depth);
        return semicolon + 1;
    }

    void entity(QByteArrayView name, QByteArrayView asWritten, int depth)
    {
        const auto found = entities_ ? entities_->constFind(name.toByteArray()) : Entities::const_iterator();
        const bool known = entities_ && found != entities_->constEnd();
        if (!known || depth >= depthLimit || out.size() + found->size() > expansionLimit)
            out += asWritten;
        else
            run(*found, depth + 1);
    }

    const Entities *entities_;
    bool inAttribute_;
};

} // namespace

std::optional<char32_t> characterOf(QByteArrayView name)
{
    if (name.startsWith('#')) {
        const bool hex = name.size() > 1 && name[1] == 'x';
        bool ok = false;
        const uint number = name.sliced(hex ? 2 : 1).toByteArray().toUInt(&ok, hex ? 16 : 10);
        return ok && number <= QChar::LastValidCodePoint ? number : 0xFFFD;
    }
    for (const Predefined &entity : predefined) {
        if (name == QByteArrayView(entity.name))
            return char32_t(entity.character);
    }
    return std::nullopt;
}

QString textOf(QByteArrayView utf8)
{
    QString text = QString::fromUtf8(utf8);
    if (utf8.startsWith("\xEF\xBB\xBF"))
        text.prepend(QChar(QChar::ByteOrderMark));
    return text;
}

QString textOf(char32_t character) { return QStringView(QChar::fromUcs4(character)).toString(); }

QString decodeText(QByteArrayView raw)
{
    Decoder decoder(nullptr, false);
    decoder.run(raw);
    return textOf(decoder.out);
}

QString decodeVerbatim(QByteArrayView raw)
{
    QString text = textOf(raw);
    if (raw.contains('\r'))
        text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    return text;
}

QString decodeAttribute(QByteArrayView raw, const Entities &entities)
{
    Decoder decoder(&entities, true);
    decoder.run(raw);
    return textOf(decoder.out);
}

} // namespace dom
