#include "editor/count_all.h"

#include "editor/editor_text.h"

#include <QLocale>
#include <algorithm>
#include <limits>

namespace editor {

namespace {

qint64 inCounter(qint64 value) { return value > std::numeric_limits<qint16>::max() ? 0 : value; }

} // namespace

// Every byte that does not continue a character begins one.
TextCounts countAll(QByteArrayView utf8, qint64 lines)
{
    if (utf8.isEmpty())
        return {0, 0, lines};
    const auto begins = [](char byte) { return (quint8(byte) & 0xC0) != 0x80; };
    return {std::count(utf8.begin(), utf8.end(), ' ') + 1, std::count_if(utf8.begin(), utf8.end(), begins),
            lines};
}

TextCounts countAll(const control::CodeEditor &editor)
{
    return countAll(editor.textInPlace(), editor.lineCount());
}

QString countTitle() { return QStringLiteral("Count All"); }

QString countMessage(const TextCounts &counts)
{
    return QStringLiteral("Words: %1\nCharacters:%2\nLines: %3")
        .arg(counts.words)
        .arg(inCounter(counts.characters))
        .arg(inCounter(counts.lines));
}

QString countLine(const TextCounts &counts)
{
    const QLocale locale;
    return QStringLiteral("%1 words, %2 characters, %3 lines")
        .arg(locale.toString(counts.words), locale.toString(counts.characters),
             locale.toString(counts.lines));
}

} // namespace editor
