#include "tidy/launcher/references.h"

#include "platform/files/code_points.h"
#include "platform/files/markup_context.h"

#include <libxml/HTMLparser.h>

namespace launcher {

namespace {

QByteArray referenceTo(char32_t character, bool named)
{
    const htmlEntityDesc *entity = named ? htmlEntityValueLookup(unsigned(character)) : nullptr;
    const QByteArray name = entity ? QByteArray(entity->name) : '#' + QByteArray::number(uint(character));
    return '&' + name + ';';
}

} // namespace

QByteArray withReferences(const QByteArray &utf8, Alphabet alphabet, bool named)
{
    if (alphabet == Alphabet::Unicode)
        return utf8;
    const char32_t last = alphabet == Alphabet::Ascii ? 0x7F : 0xFF;
    files::MarkupContext context(utf8);
    QByteArray out;
    out.reserve(utf8.size());
    for (qsizetype at = 0; at < utf8.size();) {
        const files::CodePoint character = files::codePointAt(utf8, at);
        if (character.value > last && context.allowsReferenceAt(at))
            out += referenceTo(character.value, named);
        else
            out.append(utf8.constData() + at, character.size);
        at += character.size;
    }
    return out;
}

} // namespace launcher
