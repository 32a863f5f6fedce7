// The styles of markup, and of scripts and style sheets within it.
#pragma once

namespace control {

// They are the hypertext lexer's numbers where that one has them, and less than 64.
enum MarkupStyle : char
{
    TextMarkup = 0,
    NameMarkup = 1, // of an element
    AttributeMarkup = 3,
    DoubleQuotedMarkup = 6,
    SingleQuotedMarkup = 7,
    TagMarkup = 8, // brackets and blanks of a tag
    CommentMarkup = 9,
    ReferenceMarkup = 10,
    InstructionMarkup = 12,
    SectionMarkup = 17, // CDATA
    BareValueMarkup = 19,
    DeclarationMarkup = 21,
    DeclarationStringMarkup = 24,
    ScriptBlank = 41,
    ScriptComment = 42,
    ScriptLineComment = 43,
    ScriptNumber = 45,
    ScriptWord = 46,
    ScriptKeyword = 47,
    ScriptDoubleQuoted = 48,
    ScriptSingleQuoted = 49,
    ScriptOperator = 50,
    ScriptTemplate = 51,
    ScriptPattern = 52,
    EqualsMarkup = 53,
    SheetText = 54, // blanks and values
    SheetComment = 55,
    SheetSelector = 56,
    SheetProperty = 57,
    SheetNumber = 58,
    SheetString = 59,
    SheetOperator = 60,
    SheetKeyword = 61
};

constexpr bool isScriptStyle(int style) { return style >= ScriptBlank && style <= ScriptPattern; }
constexpr bool isSheetStyle(int style) { return style >= SheetText && style <= SheetKeyword; }
constexpr bool isBlockCommentStyle(int style)
{
    return style == CommentMarkup || style == ScriptComment || style == SheetComment;
}

} // namespace control
