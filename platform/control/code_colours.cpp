#include "platform/control/code_colours.h"

#include "platform/control/code_editor.h"
#include "platform/control/editor_look.h"

#include <QEvent>
#include <algorithm>
#include <array>
#include <span>

namespace control {

namespace {

using S = QsciScintillaBase;

// The styles of markup whose colours the parts of a program take, so that both look alike in every palette.
enum MarkupStyle
{
    NumberAs = 1, // a tag
    WordAs = 12, // an instruction
    CommentAs = 9,
    StringAs = 10, // an entity
    DirectiveAs = 3, // an attribute
    FaultyAs = 26
};

struct CodeStyle
{
    int style; // a number of the language's lexer
    MarkupStyle like;
};

constexpr CodeStyle cStyles[] = {
    {1, CommentAs},  {2, CommentAs}, {3, CommentAs},   {4, NumberAs},   {5, WordAs},    {6, StringAs},
    {7, StringAs},   {8, NumberAs},  {9, DirectiveAs}, {12, FaultyAs},  {13, StringAs}, {14, StringAs},
    {15, CommentAs}, {16, WordAs},   {17, CommentAs},  {18, CommentAs}, {20, StringAs},
};
constexpr CodeStyle basicStyles[] = {
    {1, CommentAs}, {2, NumberAs}, {3, WordAs}, {4, StringAs}, {5, DirectiveAs}, {8, NumberAs}, {9, FaultyAs},
};
constexpr CodeStyle pascalStyles[] = {
    {2, CommentAs}, {3, CommentAs}, {4, CommentAs}, {5, DirectiveAs}, {6, DirectiveAs}, {7, NumberAs},
    {8, NumberAs},  {9, WordAs},    {10, StringAs}, {11, FaultyAs},   {12, StringAs},   {14, DirectiveAs},
};
constexpr CodeStyle sqlStyles[] = {
    {1, CommentAs},  {2, CommentAs}, {3, CommentAs},   {4, NumberAs},   {5, WordAs},
    {6, StringAs},   {7, StringAs},  {8, DirectiveAs}, {9, CommentAs},  {13, CommentAs},
    {15, CommentAs}, {16, WordAs},   {17, CommentAs},  {18, CommentAs}, {23, DirectiveAs},
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
    editor.installEventFilter(this);
}

// The editor itself knows of markup only: for a program it counts as plain.
void CodeColours::setLanguage(const QString &name)
{
    language_ = findLanguage(name);
    editor_.setLanguage(markupLanguage(name));
    setEditorLexer(editor_, editor_.language());
    dressEditor(editor_, editor_.palette());
    if (!language_)
        return;
    editor_.send(S::SCI_SETLEXER, ulong(language_->lexer));
    editor_.SendScintilla(S::SCI_SETKEYWORDS, uintptr_t(0), language_->words);
    dress();
}

void CodeColours::dress()
{
    constexpr int lastStyle = 31; // of a lexer
    std::array<long, lastStyle + 1> markup{};
    for (int style = 0; style <= lastStyle; ++style)
        markup[size_t(style)] = editor_.send(S::SCI_STYLEGETFORE, ulong(style));
    const long ink = editor_.send(S::SCI_STYLEGETFORE, S::STYLE_DEFAULT);
    for (int style = 0; style <= lastStyle; ++style)
        editor_.send(S::SCI_STYLESETFORE, ulong(style), ink);
    for (const CodeStyle &row : language_->styles)
        editor_.send(S::SCI_STYLESETFORE, ulong(row.style), markup[size_t(row.like)]);
}

// The editor puts its own colours on at a new palette, after this.
bool CodeColours::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::PaletteChange && language_) {
        QMetaObject::invokeMethod(
            this,
            [this] {
                if (!language_)
                    return;
                dressEditor(editor_, editor_.palette());
                dress();
            },
            Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
}

} // namespace control
