#include "platform/control/code_colours.h"

#include "platform/control/code_editor.h"
#include "platform/control/editor_look.h"
#include "platform/control/long_runs.h"

#include <algorithm>
#include <span>

namespace control {

namespace {

using S = QsciScintillaBase;

struct CodeStyle
{
    int style; // a number of the language's lexer
    Token token;
};

constexpr CodeStyle cStyles[] = {
    {1, Token::Comment},  {2, Token::Comment},   {3, Token::Comment},  {4, Token::Number},
    {5, Token::Keyword},  {6, Token::String},    {7, Token::String},   {8, Token::Number},
    {9, Token::Scope},    {10, Token::Operator}, {12, Token::String},  {13, Token::String},
    {14, Token::String},  {15, Token::Comment},  {16, Token::Keyword}, {17, Token::Comment},
    {18, Token::Comment}, {20, Token::String},
};
constexpr CodeStyle basicStyles[] = {
    {1, Token::Comment}, {2, Token::Number},   {3, Token::Keyword}, {4, Token::String},
    {5, Token::Scope},   {6, Token::Operator}, {8, Token::Number},  {9, Token::String},
};
constexpr CodeStyle pascalStyles[] = {
    {2, Token::Comment}, {3, Token::Comment},   {4, Token::Comment}, {5, Token::Scope},   {6, Token::Scope},
    {7, Token::Number},  {8, Token::Number},    {9, Token::Keyword}, {10, Token::String}, {11, Token::String},
    {12, Token::String}, {13, Token::Operator}, {14, Token::Scope},
};
constexpr CodeStyle sqlStyles[] = {
    {1, Token::Comment},  {2, Token::Comment},   {3, Token::Comment},  {4, Token::Number},
    {5, Token::Keyword},  {6, Token::String},    {7, Token::String},   {8, Token::Scope},
    {9, Token::Comment},  {10, Token::Operator}, {13, Token::Comment}, {15, Token::Comment},
    {16, Token::Keyword}, {17, Token::Comment},  {18, Token::Comment}, {23, Token::Scope},
};

} // namespace

struct CodeLanguage
{
    const char *name;
    int lexer;
    std::span<const CodeStyle> styles;
    const char *words; // as the lexer compares them: lower case where case does not matter
};

namespace {

constexpr CodeLanguage languages[] = {
    {"C/C++", S::SCLEX_CPP, cStyles,
     "alignas alignof asm auto bool break case catch char class concept const consteval constexpr constinit "
     "const_cast continue co_await co_return co_yield decltype default delete do double dynamic_cast else "
     "enum "
     "explicit export extern false final float for friend goto if inline int long mutable namespace new "
     "noexcept "
     "nullptr operator override private protected public register reinterpret_cast requires return short "
     "signed "
     "sizeof static static_assert static_cast struct switch template this thread_local throw true try "
     "typedef "
     "typeid typename union unsigned using virtual void volatile wchar_t while"},
    {"Basic", S::SCLEX_VB, basicStyles,
     "addressof and as boolean byref byte byval call case cbool cbyte cdate cdbl cint class clng const csng "
     "cstr "
     "currency date declare dim do double each else elseif empty end enum erase error event exit false for "
     "friend function get global gosub goto if implements in integer is let lib like long loop me mod new "
     "next "
     "not nothing null object on option optional or paramarray preserve private property public raiseevent "
     "redim "
     "resume return select set single static step stop string sub then to true type until variant wend while "
     "with withevents xor"},
    {"Java", S::SCLEX_CPP, cStyles,
     "abstract assert boolean break byte case catch char class const continue default do double else enum "
     "extends "
     "false final finally float for goto if implements import instanceof int interface long native new null "
     "package private protected public record return short static strictfp super switch synchronized this "
     "throw "
     "throws transient true try var void volatile while yield"},
    {"Pascal", S::SCLEX_PASCAL, pascalStyles,
     "and array as asm begin case class const constructor destructor div do downto else end except exports "
     "file "
     "finalization finally for function goto if implementation in inherited initialization inline interface "
     "is "
     "label library mod nil not object of on or out packed private procedure program property protected "
     "public "
     "published raise record repeat resourcestring set shl shr string then threadvar to try type unit until "
     "uses "
     "var while with xor"},
    {"SQL", S::SCLEX_SQL, sqlStyles,
     "add all alter and any as asc begin between bigint by cascade case cast char check column commit "
     "constraint "
     "create cross current cursor database date decimal declare default delete desc distinct double drop "
     "else end "
     "except exec exists false fetch float foreign from full function grant group having if in index inner "
     "insert "
     "int integer intersect into is join key left like limit natural not null numeric of on or order outer "
     "precision primary procedure real references return revoke right rollback select set smallint table "
     "then "
     "time timestamp to transaction trigger true union unique update using values varchar view when where "
     "while "
     "with"},
};

const CodeLanguage *findLanguage(const QString &name)
{
    const auto *found
        = std::find_if(std::begin(languages), std::end(languages),
                       [&name](const auto &language) { return QLatin1StringView(language.name) == name; });
    return found == std::end(languages) ? nullptr : found;
}

Language markupLanguage(const QString &name)
{
    if (name == QStringLiteral("XML"))
        return Language::Xml;
    return name == QStringLiteral("HTML") ? Language::Html : Language::Plain;
}

} // namespace

CodeColours::CodeColours(CodeEditor &editor) : QObject(&editor), editor_(editor)
{
    connect(&editor, &CodeEditor::dressed, this, &CodeColours::dress);
}

// The editor itself knows of markup only: for a program it counts as plain.
void CodeColours::setLanguage(const QString &name)
{
    language_ = findLanguage(name);
    editor_.setLanguage(markupLanguage(name));
    setEditorLexer(editor_, editor_.language());
    dressEditor(editor_);
    if (language_) {
        editor_.send(S::SCI_SETLEXER, ulong(language_->lexer));
        editor_.SendScintilla(S::SCI_SETKEYWORDS, uintptr_t(0), language_->words);
        dress();
    }
    editor_.xmlStyling().restart();
    editor_.viewport()->update();
}

void CodeColours::dress()
{
    if (!language_)
        return;
    constexpr int lastStyle = 31; // of a lexer
    const Look look(editor_.properties(), editor_.palette());
    for (const int same : sameLooks) {
        for (int style = 0; style <= lastStyle; ++style)
            dressStyle(editor_, style + same, look.token(Token::Text));
        for (const CodeStyle &row : language_->styles)
            dressStyle(editor_, row.style + same, look.token(row.token));
    }
}

} // namespace control
