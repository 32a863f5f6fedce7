// What the bytes of scripts and style sheets within a page are, piece by piece, like the markup around them:
// reading can stop at any place that it came to and go on from there with the state alone.
#pragma once

#include "platform/control/markup_style.h"

#include <QByteArrayView>
#include <array>
#include <cstring>

namespace control {

enum class CodeMode : quint8
{
    Code,
    Word, // the rest of one
    Number,
    Keyword, // of a style sheet
    LineComment,
    Comment,
    DoubleQuoted,
    SingleQuoted,
    Template,
    Pattern, // a regular expression
    PatternClass, // between its brackets
    PatternFlags // behind it
};

enum class SheetPart : quint8
{
    Selector,
    Property,
    Value
};

struct CodeState
{
    CodeMode mode = CodeMode::Code;
    // Of scripts: behind a value "/" divides, elsewhere it begins a regular expression.
    bool behindValue = false;
    // Of style sheets.
    SheetPart part = SheetPart::Selector;
    bool groups = false; // a rule was begun whose block holds rules
    quint8 parentheses = 0;
    // Templates that code stands in, and how many braces were open where each was left.
    quint8 templates = 0;
    std::array<int, 3> bracesAround{};
    int braces = 0; // open ones

    bool operator==(const CodeState &) const = default;
};

// A stretch of code while it is read.
struct CodeText
{
    QByteArrayView text;
    char *styles; // null when only the state is wanted
    qsizetype at;
    qsizetype end;
    bool more; // follows, which decides what a piece at the end is

    bool cutOff(qsizetype length) const { return more && end - at < length; }
    QByteArrayView rest() const { return text.sliced(at, end - at); }
    void take(qsizetype to, MarkupStyle style)
    {
        if (styles != nullptr)
            std::memset(styles + at, style, size_t(to - at));
        at = to;
    }
    template <typename Belongs>
    void takeWhile(MarkupStyle style, Belongs belongs)
    {
        qsizetype to = at;
        while (to < end && belongs(text[to]))
            ++to;
        take(to, style);
    }
};

// Each reads one piece, or changes the mode, or leaves all as it is where a piece is cut off.
void readScript(CodeText &code, CodeState &state);
void readStyleSheet(CodeText &code, CodeState &state);

// For both: up to the end of a comment, and of a string, which ends with its line at the latest.
void readBlockComment(CodeText &code, CodeState &state, MarkupStyle style);
void readCodeString(CodeText &code, CodeState &state, char quote, MarkupStyle style);

constexpr bool isCodeWordByte(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_'
        || static_cast<unsigned char>(c) >= 0x80;
}
constexpr bool isCodeDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isCodeLineEnd(char c) { return c == '\n' || c == '\r'; }
constexpr bool isCodeBlank(char c) { return c == ' ' || c == '\t' || c == '\f' || isCodeLineEnd(c); }

} // namespace control
