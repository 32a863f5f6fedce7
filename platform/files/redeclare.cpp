#include "platform/files/redeclare.h"

#include "platform/files/declaration.h"
#include "platform/files/encoding_table.h"

namespace files {

namespace {

// The name that fits what the mark leaves to be said.
QByteArray declaredName(const EncodingEntry &entry, bool mark)
{
    if (mark && isUtf16(entry.codec))
        return entryOf(Codec::Utf16).name;
    if (mark && isUtf32(entry.codec))
        return entryOf(Codec::Utf32).name;
    return entry.name;
}

bool speaksForItself(const EncodingEntry &entry, bool mark)
{
    return entry.codec == Codec::Utf8 || (isWide(entry.codec) && mark);
}

// Where an encoding goes in an XML declaration that names none: behind the version.
qsizetype placeInXmlDeclaration(const QByteArray &utf8)
{
    const qsizetype start = utf8.indexOf("<?xml") + 5;
    const qsizetype end = utf8.indexOf("?>", start);
    const qsizetype version = utf8.indexOf("version", start);
    if (version < 0 || version > end)
        return start;
    const qsizetype quote = utf8.indexOf('=', version) + 1;
    for (qsizetype at = quote; at < end; ++at) {
        if (utf8[at] == '"' || utf8[at] == '\'')
            return utf8.indexOf(utf8[at], at + 1) + 1;
    }
    return start;
}

QByteArray lineEndOf(const QByteArray &utf8)
{
    const qsizetype at = utf8.indexOf('\n');
    if (at < 0)
        return utf8.contains('\r') ? "\r" : "\r\n";
    return at > 0 && utf8[at - 1] == '\r' ? "\r\n" : "\n";
}

platform::Result<QByteArray> withMeta(const QByteArray &utf8, const QByteArray &name)
{
    const qsizetype head = utf8.toLower().indexOf("<head");
    const qsizetype end = head < 0 ? -1 : utf8.indexOf('>', head);
    if (end < 0)
        return platform::Failure{QStringLiteral("The page has no head in which to name the encoding.")};
    return QByteArray(utf8).insert(end + 1, "<meta charset=\"" + name + "\" />");
}

platform::Result<QByteArray> withDeclaration(const QByteArray &utf8, const Declaration &declaration,
                                             const QByteArray &name)
{
    if (declaration.names())
        return QByteArray(utf8).replace(declaration.at, declaration.name.size(), name);
    if (declaration.by == DeclaredBy::Xml)
        return QByteArray(utf8).insert(placeInXmlDeclaration(utf8), " encoding=\"" + name + '"');
    if (looksLikeHtml(utf8))
        return withMeta(utf8, name);
    return "<?xml version=\"1.0\" encoding=\"" + name + "\"?>" + lineEndOf(utf8) + utf8;
}

} // namespace

platform::Result<Redeclared> redeclare(const QByteArray &utf8, const EncodingWish &wish)
{
    const EncodingEntry *entry = findEncoding(wish.name);
    if (!entry)
        return platform::Failure{
            QStringLiteral("This system cannot write %1.").arg(QString::fromLatin1(wish.name))};
    const Declaration declaration = declarationIn(utf8);
    const bool page = !declaration.names() && declaration.by != DeclaredBy::Xml && looksLikeHtml(utf8);
    // What is no markup has no place for a declaration; a page that says nothing is not taken for UTF-8.
    const bool mark = wish.byteOrderMark || (page && entry->codec == Codec::Utf8);
    QByteArray text = utf8;
    const bool needed = !speaksForItself(*entry, mark) && looksLikeMarkup(utf8);
    const bool markSays = declaration.by == DeclaredBy::Html && isWide(entry->codec);
    if ((declaration.names() && !markSays) || needed) {
        auto declared = withDeclaration(utf8, declaration, declaredName(*entry, mark));
        if (!declared)
            return platform::Failure{declared.reason()};
        text = *std::move(declared);
    }
    TextEncoding encoding;
    encoding.name = entry->name;
    encoding.byteOrderMark = mark;
    encoding.declared = declarationIn(text);
    return Redeclared{std::move(text), std::move(encoding)};
}

} // namespace files
