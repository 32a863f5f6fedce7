#include "platform/files/outlook.h"

#include "platform/files/narrow_codec.h"

#include <algorithm>

namespace files {

namespace {

bool sameFamily(Codec a, Codec b)
{
    return a == b || (isUtf16(a) && isUtf16(b)) || (isUtf32(a) && isUtf32(b));
}

bool isUnicode(Codec codec) { return codec == Codec::Utf8 || isWide(codec); }

Codec inByteOrder(Codec codec, Codec cameWith)
{
    if (codec == Codec::Utf16)
        return cameWith == Codec::Utf16BE ? Codec::Utf16BE : Codec::Utf16LE;
    if (codec == Codec::Utf32)
        return cameWith == Codec::Utf32BE ? Codec::Utf32BE : Codec::Utf32LE;
    return codec;
}

Outlook unchanged(const TextEncoding &cameWith) { return {cameWith.name, cameWith.byteOrderMark, true, {}}; }

// A mark is kept where the file had one of the same kind; where the byte order is left open it is needed.
Outlook changedTo(const EncodingEntry &entry, const EncodingEntry &came, bool hadMark)
{
    const bool kept = hadMark && isUnicode(entry.codec) && sameFamily(entry.codec, came.codec);
    const bool needed = entry.codec == Codec::Utf16 || entry.codec == Codec::Utf32;
    const Codec codec = inByteOrder(entry.codec, came.codec);
    const EncodingEntry &written = codec == entry.codec ? entry : entryOf(codec);
    return {written.name, kept || needed, false, {}};
}

// Its bytes begin with an escape, before any declaration could say what they are.
bool hidesItsDeclaration(const EncodingEntry &entry) { return QByteArrayView(entry.name) == "ISO-2022-KR"; }

// The text named its encoding and no longer does: by rule it is UTF-8 then, unless a mark says otherwise.
// Browsers take a page that says nothing for anything else, and so it gets a mark.
Outlook undeclared(const QByteArray &utf8, const EncodingEntry &came, const TextEncoding &cameWith)
{
    if (cameWith.byteOrderMark || came.codec == Codec::Utf8)
        return unchanged(cameWith);
    return {entryOf(Codec::Utf8).name, looksLikeHtml(utf8), false,
            QStringLiteral("The document no longer names its encoding: it was written in UTF-8, not in %1.")
                .arg(QString::fromLatin1(cameWith.name))};
}

} // namespace

const EncodingEntry *writableDeclaration(const Declaration &declaration)
{
    const EncodingEntry *entry = declaredEntry(declaration);
    if (entry && entry->codec == Codec::System && !narrowEncoder(*entry))
        return nullptr;
    return entry;
}

bool isAsciiOnly(QByteArrayView utf8)
{
    return std::none_of(utf8.begin(), utf8.end(), [](char c) { return uchar(c) >= 0x80; });
}

platform::Result<Outlook> outlookOf(const QByteArray &utf8, const TextEncoding &cameWith)
{
    const EncodingEntry *found = findEncoding(cameWith.name);
    const EncodingEntry &came = found ? *found : entryOf(Codec::Utf8);
    const Declaration declaration = declarationIn(utf8);
    if (found && declaration == cameWith.declared)
        return unchanged(cameWith);
    if (!declaration.names())
        return undeclared(utf8, came, cameWith);
    const EncodingEntry *entry = writableDeclaration(declaration);
    if (!entry) {
        return platform::Failure{
            QStringLiteral("The document declares the encoding \"%1\", which is not known here. Nothing was "
                           "written.")
                .arg(QString::fromUtf8(declaration.name.left(40)))};
    }
    if (standsFor(*entry, came))
        return unchanged(cameWith);
    if (hidesItsDeclaration(*entry)) {
        return platform::Failure{QStringLiteral("No other program could read a document that declares %1 and "
                                                "is written in it. Nothing was written.")
                                     .arg(QString::fromLatin1(entry->name))};
    }
    return changedTo(*entry, came, cameWith.byteOrderMark);
}

} // namespace files
