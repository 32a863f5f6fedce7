#include "platform/control/line_numbers.h"

#include "platform/control/code_editor.h"
#include "platform/control/editor_look.h"

#include <algorithm>
#include <cstdlib>

namespace control {

namespace {

using S = QsciScintillaBase;

QString numberOf(const EditorProperties &properties, int line, int base)
{
    return QString::number(qint64(properties.numberingStart) + line, base).toUpper();
}

NumberingStyle styleOf(const EditorProperties &properties)
{
    return NumberingStyle(properties.numberingStyle);
}

// The engine itself numbers in decimal, from one.
bool engineNumbers(const EditorProperties &properties)
{
    switch (styleOf(properties)) {
    case NumberingStyle::Hexadecimal:
    case NumberingStyle::EveryTenth:
    case NumberingStyle::FromCaret:
        return false;
    default:
        return properties.numberingStart == 1;
    }
}

qsizetype widestNumber(const CodeEditor &editor)
{
    constexpr qsizetype least = 3;
    const qsizetype first = lineNumber(editor.properties(), 0).size();
    const qsizetype last = lineNumber(editor.properties(), editor.lineCount()).size();
    return std::max({least, first, last});
}

// Writing what stands there already would paint the margin once more.
void write(CodeEditor &editor, long line, const QByteArray &number)
{
    const long length
        = editor.SendScintilla(S::SCI_MARGINGETTEXT, uintptr_t(line), static_cast<const char *>(nullptr));
    QByteArray before(length, '\0');
    if (length > 0)
        editor.SendScintilla(S::SCI_MARGINGETTEXT, uintptr_t(line), before.data());
    if (before == number)
        return;
    editor.SendScintilla(S::SCI_MARGINSETTEXT, uintptr_t(line), number.constData());
    if (!number.isEmpty())
        editor.send(S::SCI_MARGINSETSTYLE, ulong(line), S::STYLE_LINENUMBER);
}

} // namespace

QString lineNumber(const EditorProperties &properties, int line)
{
    constexpr int hexadecimal = 16;
    constexpr int decimal = 10;
    return numberOf(properties, line,
                    styleOf(properties) == NumberingStyle::Hexadecimal ? hexadecimal : decimal);
}

QString numberBeside(const EditorProperties &properties, int line, int caretLine)
{
    const bool atCaret = line == caretLine;
    if (styleOf(properties) == NumberingStyle::FromCaret && !atCaret)
        return QString::number(std::abs(line - caretLine));
    if (styleOf(properties) == NumberingStyle::EveryTenth && !atCaret
        && (qint64(properties.numberingStart) + line) % 10 != 0)
        return {};
    return lineNumber(properties, line);
}

void LineNumbers::fit(CodeEditor &editor)
{
    const EditorProperties &properties = editor.properties();
    const bool engine = engineNumbers(properties);
    if (written_ && (engine || !properties.lineNumbering))
        editor.send(S::SCI_MARGINTEXTCLEARALL);
    written_ = properties.lineNumbering && !engine;
    editor.send(S::SCI_SETMARGINTYPEN, numberMargin, engine ? S::SC_MARGIN_NUMBER : S::SC_MARGIN_RTEXT);
    long width = 0;
    if (properties.lineNumbering) {
        constexpr long beside = 10;
        const QByteArray widest(widestNumber(editor), '9');
        width = beside
            + editor.SendScintilla(S::SCI_TEXTWIDTH, uintptr_t(S::STYLE_LINENUMBER), widest.constData());
    }
    editor.send(S::SCI_SETMARGINWIDTHN, numberMargin, width);
    update(editor);
}

void LineNumbers::update(CodeEditor &editor)
{
    if (!written_)
        return;
    const long first = editor.send(S::SCI_GETFIRSTVISIBLELINE);
    const long past = first + editor.send(S::SCI_LINESONSCREEN) + 2; // the last one may be cut in half
    const int caret = editor.caretLine();
    const long lines = editor.lineCount();
    long before = -1;
    for (long shown = first; shown < past; ++shown) {
        const long line = editor.send(S::SCI_DOCLINEFROMVISIBLE, ulong(shown));
        if (line >= lines)
            return;
        if (line != before)
            write(editor, line, numberBeside(editor.properties(), int(line), caret).toLatin1());
        before = line;
    }
}

} // namespace control
