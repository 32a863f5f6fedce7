#include "platform/control/replacement_text.h"

#include <algorithm>

namespace control {

namespace {

struct Escape
{
    char16_t letter;
    const char *meaning;
};

constexpr Escape escapes[] = {{u'r', "\r"}, {u't', "\t"}, {u'f', "\f"}, {u'\\', "\\"}, {u'$', "$"}};

qsizetype plainLength(QStringView text)
{
    const auto special = [](QChar character) { return character == u'$' || character == u'\\'; };
    return std::find_if(text.begin(), text.end(), special) - text.begin();
}

bool isDigit(QChar character) { return character >= u'0' && character <= u'9'; }

// Case is changed before a text is cut into bytes again; one character may become several.
class Casing
{
public:
    QByteArray applied(QByteArrayView bytes)
    {
        if ((mode_ == Mode::AsIs && once_ == Mode::AsIs) || bytes.isEmpty())
            return bytes.toByteArray();
        QString text = QString::fromUtf8(bytes);
        const qsizetype first = text.front().isHighSurrogate() && text.size() > 1 ? 2 : 1;
        const Mode head = once_ == Mode::AsIs ? mode_ : once_;
        once_ = Mode::AsIs;
        return (cased(text.first(first), head) + cased(text.sliced(first), mode_)).toUtf8();
    }
    enum class Mode
    {
        AsIs,
        Upper,
        Lower
    };
    void set(Mode mode, bool once)
    {
        once_ = mode;
        if (!once)
            mode_ = mode;
    }

private:
    static QString cased(const QString &text, Mode mode)
    {
        return mode == Mode::Upper ? text.toUpper() : mode == Mode::Lower ? text.toLower() : text;
    }

    Mode mode_ = Mode::AsIs;
    Mode once_ = Mode::AsIs;
};

} // namespace

ReplacementText::ReplacementText(const QString &text, const TextSearch &search, QByteArrayView lineEnd)
{
    if (!search.pattern().expression) {
        add(text);
        return;
    }
    const QStringView all(text);
    for (qsizetype at = 0; at < all.size() && !fault_;) {
        const qsizetype plain = plainLength(all.sliced(at));
        add(all.sliced(at, plain));
        at += plain;
        if (at == all.size())
            break;
        const QStringView rest = all.sliced(at + 1);
        const qsizetype used
            = all[at] == u'$' ? readDollar(rest, search) : readBackslash(rest, search, lineEnd);
        if (fault_)
            fault_->place = at;
        at += 1 + used;
    }
}

void ReplacementText::add(QStringView text)
{
    if (!text.isEmpty())
        pieces_.append({Kind::Bytes, text.toUtf8(), 0});
}

qsizetype ReplacementText::refuse(const QString &message)
{
    fault_ = PatternFault{message, 0};
    return 0;
}

void ReplacementText::addGroup(int number, const TextSearch &search)
{
    if (number > search.groupCount())
        refuse(QStringLiteral("The expression has no group %1").arg(number));
    pieces_.append({Kind::Group, {}, number});
}

// Of the digits, as many as make the number of a group.
qsizetype ReplacementText::readNumber(QStringView rest, const TextSearch &search)
{
    const bool two = rest.size() > 1 && isDigit(rest[1]) && rest.first(2).toInt() <= search.groupCount();
    const qsizetype digits = two ? 2 : 1;
    addGroup(rest.first(digits).toInt(), search);
    return digits;
}

qsizetype ReplacementText::readDollar(QStringView rest, const TextSearch &search)
{
    if (rest.isEmpty())
        return refuse(QStringLiteral("\"$\" at the end; write \"$$\" for a dollar sign"));
    if (isDigit(rest[0]))
        return readNumber(rest, search);
    if (rest[0] == u'$' || rest[0] == u'&') {
        if (rest[0] == u'$')
            add(u"$");
        else
            addGroup(0, search);
        return 1;
    }
    const qsizetype end = rest.indexOf(u'}');
    if (rest[0] != u'{' || end < 2)
        return refuse(QStringLiteral("\"$\" without a group; write \"$$\" for a dollar sign"));
    const QStringView name = rest.sliced(1, end - 1);
    bool numbered = false;
    const int number = name.toInt(&numbered);
    const int group = numbered && number >= 0 ? number : search.groupNumber(name.toUtf8());
    if (group < 0)
        return refuse(QStringLiteral("The expression has no group \"%1\"").arg(name));
    addGroup(group, search);
    return end + 1;
}

qsizetype ReplacementText::readBackslash(QStringView rest, const TextSearch &search, QByteArrayView lineEnd)
{
    if (rest.isEmpty())
        return refuse(QStringLiteral("\"\\\" at the end; write \"\\\\\" for a backslash"));
    if (isDigit(rest[0]))
        return readNumber(rest, search);
    if (rest[0] == u'x')
        return readHex(rest);
    const qsizetype casing = QStringView(u"ULEul").indexOf(rest[0]);
    constexpr Kind casings[] = {Kind::Upper, Kind::Lower, Kind::AsIs, Kind::UpperOne, Kind::LowerOne};
    const auto escape = std::find_if(std::begin(escapes), std::end(escapes),
                                     [&](const Escape &row) { return row.letter == rest[0]; });
    if (rest.startsWith(u"r\\n")) {
        pieces_.append({Kind::Bytes, lineEnd.toByteArray(), 0});
        return 3;
    }
    if (casing >= 0)
        pieces_.append({casings[casing], {}, 0});
    else if (rest[0] == u'n')
        pieces_.append({Kind::Bytes, lineEnd.toByteArray(), 0});
    else if (escape != std::end(escapes))
        pieces_.append({Kind::Bytes, escape->meaning, 0});
    else if (rest[0].isLetterOrNumber())
        return refuse(QStringLiteral("\"\\%1\" has no meaning here").arg(rest[0]));
    else
        add(rest.first(1));
    return 1;
}

// "x41" or "x{1F600}".
qsizetype ReplacementText::readHex(QStringView rest)
{
    const bool braced = rest.size() > 1 && rest[1] == u'{';
    const qsizetype end = braced ? rest.indexOf(u'}') : std::min<qsizetype>(rest.size(), 3);
    const QStringView digits = end < 0 ? QStringView() : rest.sliced(braced ? 2 : 1, end - (braced ? 2 : 1));
    bool valid = false;
    const char32_t character = digits.toUInt(&valid, 16);
    if (!valid || character == 0 || character > QChar::LastValidCodePoint || QChar::isSurrogate(character))
        return refuse(QStringLiteral("\"\\x\" without the number of a character"));
    add(QString::fromUcs4(&character, 1));
    return end + (braced ? 1 : 0);
}

void ReplacementText::appendTo(QByteArray &result, QByteArrayView text, const TextSearch &search) const
{
    Casing casing;
    for (const Piece &piece : pieces_) {
        const TextMatch group = piece.kind == Kind::Group ? search.group(piece.group) : TextMatch{};
        switch (piece.kind) {
        case Kind::Bytes:
            result += casing.applied(piece.bytes);
            break;
        case Kind::Group:
            result += casing.applied(text.sliced(group.start, group.length()));
            break;
        case Kind::Upper:
        case Kind::UpperOne:
            casing.set(Casing::Mode::Upper, piece.kind == Kind::UpperOne);
            break;
        case Kind::Lower:
        case Kind::LowerOne:
            casing.set(Casing::Mode::Lower, piece.kind == Kind::LowerOne);
            break;
        case Kind::AsIs:
            casing.set(Casing::Mode::AsIs, false);
            break;
        }
    }
}

} // namespace control
