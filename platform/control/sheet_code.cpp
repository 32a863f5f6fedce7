// Style sheets within a page.
#include "platform/control/code_state.h"

#include <algorithm>
#include <limits>

namespace control {

namespace {

bool isNameByte(char c) { return isCodeWordByte(c) || c == '-' || c == '\\'; }

bool isNumberByte(char c) { return isNameByte(c) || c == '.' || c == '%'; }

void readRun(CodeText &code, CodeState &state, MarkupStyle style, bool (*belongs)(char))
{
    code.takeWhile(style, belongs);
    if (code.at < code.end || !code.more)
        state.mode = CodeMode::Code;
}

// "@media" and most others group rules; "@font-face", "@page", "@property", "@counter-style" and the like
// hold properties at once.
bool groupsRules(QByteArrayView rule)
{
    const QByteArrayView start = rule.first(std::min<qsizetype>(4, rule.size()));
    return start.size() > 1 && start[1] != 'f' && start[1] != 'p' && start[1] != 'v' && start != "@cou"
        && start != "@col";
}

void readRule(CodeText &code, CodeState &state)
{
    constexpr qsizetype decides = 4;
    const QByteArrayView rule = code.rest();
    if (code.cutOff(decides) && std::all_of(rule.begin() + 1, rule.end(), isNameByte))
        return;
    state.groups = groupsRules(rule);
    state.mode = CodeMode::Keyword;
    state.part = SheetPart::Value;
    code.take(code.at + 1, SheetKeyword);
}

void readBrace(CodeText &code, CodeState &state)
{
    const bool opens = code.text[code.at] == '{';
    state.part = !opens || state.groups ? SheetPart::Selector : SheetPart::Property;
    state.groups = false;
    state.parentheses = 0;
    state.braces = std::max(0, state.braces + (opens ? 1 : -1));
    code.take(code.at + 1, SheetOperator);
}

// Addresses stand in parentheses, with whatever signs they hold.
void readSign(CodeText &code, CodeState &state)
{
    const char c = code.text[code.at];
    if (c == '(' && state.parentheses < std::numeric_limits<quint8>::max())
        ++state.parentheses;
    else if (c == ')' && state.parentheses > 0)
        --state.parentheses;
    else if (c == ':' && state.part == SheetPart::Property)
        state.part = SheetPart::Value;
    else if (c == ';' && state.parentheses == 0) {
        state.part = state.braces > 0 ? SheetPart::Property : SheetPart::Selector;
        state.groups = false;
    }
    code.take(code.at + 1, SheetOperator);
}

void readValue(CodeText &code, CodeState &state)
{
    const char c = code.text[code.at];
    const bool signs = c == '-' || c == '.';
    if (signs && code.cutOff(2))
        return;
    const char next = code.end - code.at > 1 ? code.text[code.at + 1] : '\0';
    const bool number = isCodeDigit(c) || c == '#' || (signs && (isCodeDigit(next) || next == '.'));
    if (number) {
        state.mode = CodeMode::Number;
        code.take(code.at + 1, SheetNumber);
    } else if (isNameByte(c)) {
        state.mode = CodeMode::Word;
    } else {
        readSign(code, state);
    }
}

void readCode(CodeText &code, CodeState &state)
{
    const char c = code.text[code.at];
    if (isCodeBlank(c)) {
        code.takeWhile(SheetText, isCodeBlank);
    } else if (c == '/' && code.cutOff(2)) {
        return;
    } else if (c == '/' && code.end - code.at > 1 && code.text[code.at + 1] == '*') {
        state.mode = CodeMode::Comment;
        code.take(code.at + 2, SheetComment);
    } else if (c == '"' || c == '\'') {
        state.mode = c == '"' ? CodeMode::DoubleQuoted : CodeMode::SingleQuoted;
        code.take(code.at + 1, SheetString);
    } else if (c == '{' || c == '}') {
        readBrace(code, state);
    } else if (c == '@') {
        readRule(code, state);
    } else if (c == '!') {
        state.mode = CodeMode::Keyword;
        code.take(code.at + 1, SheetKeyword);
    } else if (state.part == SheetPart::Value) {
        readValue(code, state);
    } else if (isNameByte(c) || (state.part == SheetPart::Selector && (c == '.' || c == '#' || c == '*'))) {
        code.take(code.at + 1, state.part == SheetPart::Selector ? SheetSelector : SheetProperty);
    } else {
        readSign(code, state);
    }
}

} // namespace

void readStyleSheet(CodeText &code, CodeState &state)
{
    switch (state.mode) {
    case CodeMode::Comment:
        return readBlockComment(code, state, SheetComment);
    case CodeMode::DoubleQuoted:
        return readCodeString(code, state, '"', SheetString);
    case CodeMode::SingleQuoted:
        return readCodeString(code, state, '\'', SheetString);
    case CodeMode::Word:
        return readRun(code, state, SheetText, isNameByte);
    case CodeMode::Number:
        return readRun(code, state, SheetNumber, isNumberByte);
    case CodeMode::Keyword:
        return readRun(code, state, SheetKeyword, isNameByte);
    default:
        return readCode(code, state);
    }
}

} // namespace control
