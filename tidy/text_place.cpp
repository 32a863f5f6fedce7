#include "tidy/text_place.h"

namespace tidy {

namespace {

bool endsLine(char c) { return c == '\n' || c == '\r'; }

qsizetype startOfLine(QByteArrayView text, int line)
{
    qsizetype at = 0;
    while (line > 1 && at < text.size()) {
        const bool pair = text.sliced(at).startsWith("\r\n");
        line -= endsLine(text[at]) ? 1 : 0;
        at += pair ? 2 : 1;
    }
    return at;
}

} // namespace

int characterAt(QByteArrayView utf8, int line, int column, int tabSize)
{
    int character = 0;
    int passed = 1;
    for (qsizetype at = startOfLine(utf8, line); at < utf8.size() && !endsLine(utf8[at]); ++at) {
        const bool continues = (uchar(utf8[at]) & 0xC0) == 0x80;
        if (continues)
            continue;
        if (passed >= column)
            break;
        const bool tab = utf8[at] == '\t' && tabSize > 0;
        passed += tab ? tabSize - (passed - 1) % tabSize : 1;
        ++character;
    }
    return character;
}

} // namespace tidy
