// JavaScript within a page.
#include "platform/control/code_state.h"

#include <algorithm>
#include <string_view>

namespace control {

namespace {

// In order. Behind those of the second table a value stands already.
constexpr std::string_view keywords[] = {
    "async",     "await",      "break",  "case",  "catch",    "class", "const",  "continue",
    "debugger",  "default",    "delete", "do",    "else",     "enum",  "export", "extends",
    "false",     "finally",    "for",    "from",  "function", "get",   "if",     "import",
    "in",        "instanceof", "let",    "new",   "null",     "of",    "return", "set",
    "static",    "super",      "switch", "this",  "throw",    "true",  "try",    "typeof",
    "undefined", "var",        "void",   "while", "with",     "yield",
};
constexpr std::string_view values[] = {"false", "null", "super", "this", "true", "undefined"};
constexpr qsizetype longestKeyword = 10;

static_assert(std::is_sorted(std::begin(keywords), std::end(keywords)));

template <size_t count>
bool isAmong(const std::string_view (&words)[count], QByteArrayView word)
{
    return std::binary_search(std::begin(words), std::end(words),
                              std::string_view(word.data(), size_t(word.size())));
}

bool isWordByte(char c) { return isCodeWordByte(c) || c == '$'; }

bool isNumberByte(char c) { return isCodeWordByte(c) || c == '.'; }

void readWord(CodeText &code, CodeState &state)
{
    qsizetype length = 1;
    while (code.at + length < code.end && isWordByte(code.text[code.at + length]))
        ++length;
    const QByteArrayView word = code.text.sliced(code.at, length);
    if (code.cutOff(length + 1)) {
        if (length <= longestKeyword)
            return;
        state.mode = CodeMode::Word;
    }
    const bool keyword = isAmong(keywords, word);
    state.behindValue = !keyword || isAmong(values, word);
    code.take(code.at + length, keyword ? ScriptKeyword : ScriptWord);
}

void readRun(CodeText &code, CodeState &state, MarkupStyle style, bool (*belongs)(char))
{
    code.takeWhile(style, belongs);
    if (code.at < code.end || !code.more)
        state.mode = CodeMode::Code;
}

void readBrace(CodeText &code, CodeState &state)
{
    const bool opens = code.text[code.at] == '{';
    const bool leavesCode
        = !opens && state.templates > 0 && state.braces == state.bracesAround[size_t(state.templates) - 1];
    state.behindValue = false;
    if (leavesCode) {
        --state.templates;
        state.mode = CodeMode::Template;
    } else {
        state.braces = std::max(0, state.braces + (opens ? 1 : -1));
    }
    code.take(code.at + 1, leavesCode ? ScriptTemplate : ScriptOperator);
}

void readSlash(CodeText &code, CodeState &state)
{
    if (code.cutOff(2))
        return;
    const char next = code.end - code.at > 1 ? code.text[code.at + 1] : '\0';
    if (next == '/' || next == '*') {
        state.mode = next == '/' ? CodeMode::LineComment : CodeMode::Comment;
        code.take(code.at + 2, next == '/' ? ScriptLineComment : ScriptComment);
    } else if (state.behindValue) {
        state.behindValue = false;
        code.take(code.at + 1, ScriptOperator);
    } else {
        state.mode = CodeMode::Pattern;
        code.take(code.at + 1, ScriptPattern);
    }
}

// "++" and "--" go with the value beside them.
void readOperator(CodeText &code, CodeState &state)
{
    const char c = code.text[code.at];
    const bool sign = c == '+' || c == '-';
    if ((sign || c == '.') && code.cutOff(2))
        return;
    const char next = code.end - code.at > 1 ? code.text[code.at + 1] : '\0';
    if (c == '.' && isCodeDigit(next)) {
        state.mode = CodeMode::Number;
        state.behindValue = true;
        return;
    }
    const bool twice = sign && next == c;
    if (!twice)
        state.behindValue = c == ')' || c == ']';
    code.take(code.at + (twice ? 2 : 1), ScriptOperator);
}

void readQuote(CodeText &code, CodeState &state)
{
    const char c = code.text[code.at];
    state.mode = c == '"' ? CodeMode::DoubleQuoted : c == '\'' ? CodeMode::SingleQuoted : CodeMode::Template;
    state.behindValue = true;
    code.take(code.at + 1, c == '"' ? ScriptDoubleQuoted : c == '\'' ? ScriptSingleQuoted : ScriptTemplate);
}

void readCode(CodeText &code, CodeState &state)
{
    // Old pages hide their scripts from older browsers, to which this begins a comment.
    static constexpr QByteArrayView hiding = "<!--";
    const char c = code.text[code.at];
    if (isCodeBlank(c)) {
        code.takeWhile(ScriptBlank, isCodeBlank);
    } else if (isCodeDigit(c)) {
        state.mode = CodeMode::Number;
        state.behindValue = true;
    } else if (isWordByte(c)) {
        readWord(code, state);
    } else if (c == '{' || c == '}') {
        readBrace(code, state);
    } else if (c == '/') {
        readSlash(code, state);
    } else if (c == '"' || c == '\'' || c == '`') {
        readQuote(code, state);
    } else if (code.rest().startsWith(hiding)) {
        state.mode = CodeMode::LineComment;
    } else if (!code.cutOff(hiding.size()) || !hiding.startsWith(code.rest())) {
        readOperator(code, state);
    }
}

void readTemplate(CodeText &code, CodeState &state)
{
    while (code.at < code.end) {
        const char c = code.text[code.at];
        if ((c == '\\' || c == '$') && code.cutOff(2))
            return;
        const char next = code.end - code.at > 1 ? code.text[code.at + 1] : '\0';
        if (c == '$' && next == '{' && state.templates < state.bracesAround.size()) {
            state.bracesAround[state.templates++] = state.braces;
            state.mode = CodeMode::Code;
            state.behindValue = false;
            return code.take(code.at + 2, ScriptTemplate);
        }
        code.take(std::min(code.end, code.at + (c == '\\' ? 2 : 1)), ScriptTemplate);
        if (c == '`') {
            state.mode = CodeMode::Code;
            return;
        }
    }
}

void readPattern(CodeText &code, CodeState &state)
{
    while (code.at < code.end) {
        const char c = code.text[code.at];
        if (isCodeLineEnd(c)) {
            state.mode = CodeMode::Code;
            return;
        }
        if (c == '\\' && code.cutOff(2))
            return;
        // What a backslash takes may be the line's end, which ends all.
        const bool escapes = c == '\\' && code.end - code.at > 1 && !isCodeLineEnd(code.text[code.at + 1]);
        code.take(code.at + (escapes ? 2 : 1), ScriptPattern);
        const bool inClass = state.mode == CodeMode::PatternClass;
        if (inClass ? c == ']' : c == '[')
            state.mode = inClass ? CodeMode::Pattern : CodeMode::PatternClass;
        if (!inClass && c == '/') {
            state.mode = CodeMode::PatternFlags;
            state.behindValue = true;
            return;
        }
    }
}

} // namespace

void readBlockComment(CodeText &code, CodeState &state, MarkupStyle style)
{
    const qsizetype found = code.rest().indexOf("*/");
    if (found >= 0) {
        state.mode = CodeMode::Code;
        return code.take(code.at + found + 2, style);
    }
    code.take(code.more && code.rest().endsWith('*') ? code.end - 1 : code.end, style);
}

void readCodeString(CodeText &code, CodeState &state, char quote, MarkupStyle style)
{
    while (code.at < code.end) {
        const char c = code.text[code.at];
        if (isCodeLineEnd(c)) {
            state.mode = CodeMode::Code;
            return;
        }
        qsizetype length = 1;
        if (c == '\\') {
            if (code.cutOff(2) || (code.cutOff(3) && code.text[code.at + 1] == '\r'))
                return;
            length = code.rest().startsWith("\\\r\n") ? 3 : std::min<qsizetype>(2, code.end - code.at);
        }
        code.take(code.at + length, style);
        if (c == quote) {
            state.mode = CodeMode::Code;
            return;
        }
    }
}

void readScript(CodeText &code, CodeState &state)
{
    switch (state.mode) {
    case CodeMode::Code:
    case CodeMode::Keyword:
        return readCode(code, state);
    case CodeMode::Word:
        return readRun(code, state, ScriptWord, isWordByte);
    case CodeMode::Number:
        return readRun(code, state, ScriptNumber, isNumberByte);
    case CodeMode::PatternFlags:
        return readRun(code, state, ScriptPattern, isWordByte);
    case CodeMode::LineComment:
        return readRun(code, state, ScriptLineComment, [](char c) { return !isCodeLineEnd(c); });
    case CodeMode::Comment:
        return readBlockComment(code, state, ScriptComment);
    case CodeMode::DoubleQuoted:
        return readCodeString(code, state, '"', ScriptDoubleQuoted);
    case CodeMode::SingleQuoted:
        return readCodeString(code, state, '\'', ScriptSingleQuoted);
    case CodeMode::Template:
        return readTemplate(code, state);
    case CodeMode::Pattern:
    case CodeMode::PatternClass:
        return readPattern(code, state);
    }
}

} // namespace control
