#include "platform/control/editor_look.h"

#include "platform/control/code_editor.h"
#include "platform/control/long_runs.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <algorithm>
#include <cmath>

namespace control {

namespace {

using S = QsciScintillaBase;

struct StyleRow
{
    int first;
    int last;
    Token token;
};

// The styler's numbers, and those beside them that no text has had since; scripts and style sheets of pages
// are those from 40 on.
constexpr StyleRow styleRows[] = {
    {0, 0, Token::Text}, // between the tags
    {1, 2, Token::TagName},     {3, 4, Token::Attribute},
    {5, 5, Token::Number}, // as an attribute's value
    {6, 7, Token::String},      {8, 8, Token::TagText}, // "=" and the like
    {9, 9, Token::Comment},     {10, 10, Token::Entity},
    {11, 11, Token::TagName}, // the end of an empty tag
    {12, 13, Token::Keyword}, // instructions
    {14, 14, Token::Scope}, // a script's element
    {15, 16, Token::Keyword}, // what a server replaces
    {17, 17, Token::Scope}, // CDATA
    {18, 18, Token::Keyword},   {19, 19, Token::String}, // a value without quotes
    {20, 20, Token::Comment},   {21, 22, Token::Keyword}, // declarations
    {23, 23, Token::Attribute}, {24, 25, Token::String},
    {26, 26, Token::Keyword}, // unknown words in a declaration
    {27, 28, Token::Entity},    {29, 30, Token::Comment},
    {31, 31, Token::Keyword}, // the inside of a declaration
    {40, 40, Token::Scope},     {41, 41, Token::Text},
    {42, 44, Token::Comment},   {45, 45, Token::Number},
    {46, 46, Token::Text},      {47, 47, Token::Keyword},
    {48, 49, Token::String},    {50, 50, Token::Operator},
    {51, 52, Token::String},    {53, 53, Token::Operator}, // "=" in a tag
    {54, 54, Token::Text},      {55, 55, Token::Comment},
    {56, 56, Token::TagName}, // selectors
    {57, 57, Token::Attribute}, // properties
    {58, 58, Token::Number},    {59, 59, Token::String},
    {60, 60, Token::Operator},  {61, 61, Token::Keyword},
};

// The engine's colours are 0x00BBGGRR.
long engineColor(const QColor &color) { return color.red() | (color.green() << 8) | (color.blue() << 16); }

void setUpMargins(CodeEditor &editor)
{
    editor.send(S::SCI_SETMARGINTYPEN, bookmarkMargin, S::SC_MARGIN_COLOUR);
    editor.send(S::SCI_SETMARGINMASKN, bookmarkMargin,
                1 << bookmarkMarker | 1 << selectionFirstMarker | 1 << selectionLastMarker);
    editor.send(S::SCI_SETMARGINSENSITIVEN, bookmarkMargin, 1);
    editor.send(S::SCI_SETMARGINTYPEN, numberMargin, S::SC_MARGIN_NUMBER);
    editor.send(S::SCI_SETMARGINMASKN, numberMargin, 0);
    editor.send(S::SCI_SETMARGINTYPEN, foldMargin, S::SC_MARGIN_SYMBOL);
    editor.send(S::SCI_SETMARGINMASKN, foldMargin, long(S::SC_MASK_FOLDERS));
    editor.send(S::SCI_SETMARGINSENSITIVEN, foldMargin, 1);
    editor.send(S::SCI_SETMARGINTYPEN, dividerMargin, S::SC_MARGIN_COLOUR);
    editor.send(S::SCI_SETMARGINMASKN, dividerMargin, 0);
    editor.send(S::SCI_SETMARGINLEFT, 0, 4);
}

void setUpMarks(CodeEditor &editor)
{
    editor.send(S::SCI_MARKERDEFINE, bookmarkMarker, S::SC_MARK_BOOKMARK);
    editor.send(S::SCI_MARKERDEFINE, highlightMarker, S::SC_MARK_BACKGROUND);
    const std::pair<int, int> folders[] = {
        {S::SC_MARKNUM_FOLDER, S::SC_MARK_BOXPLUS},
        {S::SC_MARKNUM_FOLDEROPEN, S::SC_MARK_BOXMINUS},
        {S::SC_MARKNUM_FOLDERSUB, S::SC_MARK_VLINE},
        {S::SC_MARKNUM_FOLDERTAIL, S::SC_MARK_LCORNER},
        {S::SC_MARKNUM_FOLDEREND, S::SC_MARK_BOXPLUSCONNECTED},
        {S::SC_MARKNUM_FOLDEROPENMID, S::SC_MARK_BOXMINUSCONNECTED},
        {S::SC_MARKNUM_FOLDERMIDTAIL, S::SC_MARK_TCORNER},
    };
    for (const auto &[marker, shape] : folders)
        editor.send(S::SCI_MARKERDEFINE, marker, shape);
    editor.send(S::SCI_INDICSETSTYLE, tagIndicator, S::INDIC_STRAIGHTBOX);
    editor.send(S::SCI_INDICSETUNDER, tagIndicator, 1);
    editor.send(S::SCI_INDICSETSTYLE, strikeIndicator, S::INDIC_STRIKE);
}

// Whatever was kept as a size, the text can be read.
double shownSize(double points)
{
    constexpr double least = 4;
    constexpr double most = 96;
    return std::isfinite(points) ? std::clamp(points, least, most) : EditorFont().size;
}

void setFont(CodeEditor &editor, const EditorFont &font)
{
    const QByteArray face = font.name.toUtf8();
    editor.SendScintilla(S::SCI_STYLESETFONT, uintptr_t(S::STYLE_DEFAULT), face.constData());
    editor.send(S::SCI_STYLESETSIZEFRACTIONAL, S::STYLE_DEFAULT, std::lround(shownSize(font.size) * 100));
    editor.send(S::SCI_STYLESETBOLD, S::STYLE_DEFAULT, font.bold ? 1 : 0);
    editor.send(S::SCI_STYLESETITALIC, S::STYLE_DEFAULT, font.italic ? 1 : 0);
    editor.send(S::SCI_STYLESETUNDERLINE, S::STYLE_DEFAULT, font.underline ? 1 : 0);
}

void setColors(CodeEditor &editor, int style, const QColor &ink, const QColor &ground)
{
    editor.send(S::SCI_STYLESETFORE, ulong(style), engineColor(ink));
    editor.send(S::SCI_STYLESETBACK, ulong(style), engineColor(ground));
}

QColor tagMark(const Look &look) { return look.dark ? QColor(0x8FBCF5) : QColor(0x3C78C8); }

void dressText(CodeEditor &editor, const Look &look)
{
    setFont(editor, editor.properties().font);
    setColors(editor, S::STYLE_DEFAULT, look.token(Token::Text).ink, look.window);
    editor.send(S::SCI_STYLECLEARALL);
    for (const StyleRow &row : styleRows)
        for (int style = row.first; style <= row.last; ++style)
            for (const int same : sameLooks)
                dressStyle(editor, style + same, look.token(row.token));
    dressStyle(editor, S::STYLE_LINENUMBER, look.token(Token::LineNumber));
    editor.send(S::SCI_STYLESETUNDERLINE, S::STYLE_LINENUMBER, 0);
    setColors(editor, S::STYLE_INDENTGUIDE, look.divider, look.window);
    setColors(editor, S::STYLE_BRACELIGHT, tagMark(look), look.window);
    editor.send(S::SCI_STYLESETBOLD, S::STYLE_BRACELIGHT, 1);
}

void dressMargins(CodeEditor &editor, const Look &look)
{
    const long margin = engineColor(look.margin);
    editor.send(S::SCI_SETMARGINBACKN, bookmarkMargin, margin);
    editor.send(S::SCI_SETMARGINBACKN, dividerMargin, engineColor(look.verticalDivider));
    editor.send(S::SCI_SETFOLDMARGINCOLOUR, 1, margin);
    editor.send(S::SCI_SETFOLDMARGINHICOLOUR, 1, margin);
    for (int marker = S::SC_MARKNUM_FOLDEREND; marker <= int(S::SC_MARKNUM_FOLDEROPEN); ++marker) {
        editor.send(S::SCI_MARKERSETFORE, ulong(marker), margin);
        editor.send(S::SCI_MARKERSETBACK, ulong(marker), engineColor(look.marginInk));
    }
}

void dressMarks(CodeEditor &editor, const Look &look)
{
    editor.send(S::SCI_MARKERSETFORE, bookmarkMarker, engineColor(look.bookmarkInk));
    editor.send(S::SCI_MARKERSETBACK, bookmarkMarker, engineColor(look.bookmarkGround));
    // Without a left margin a bookmark tints its whole line.
    constexpr int tint = 60;
    editor.send(S::SCI_MARKERSETALPHA, bookmarkMarker, tint);
    editor.send(S::SCI_MARKERSETBACK, highlightMarker, engineColor(look.highlight));
    editor.send(S::SCI_INDICSETFORE, tagIndicator, engineColor(tagMark(look)));
    editor.send(S::SCI_INDICSETALPHA, tagIndicator, 50);
    editor.send(S::SCI_INDICSETOUTLINEALPHA, tagIndicator, 140);
    editor.send(S::SCI_INDICSETFORE, strikeIndicator, engineColor(look.token(Token::Text).ink));
    strikeText(editor);
}

// The caret's line is tinted over its ground, so that a highlighted line shows through.
void dressCaret(CodeEditor &editor, const Look &look)
{
    const QColor &ink = look.token(Token::Text).ink;
    editor.send(S::SCI_SETCARETFORE, ulong(engineColor(ink)));
    editor.send(S::SCI_SETCARETWIDTH, 2);
    editor.send(S::SCI_SETCARETLINEVISIBLE, 1);
    editor.send(S::SCI_SETCARETLINEBACK, ulong(engineColor(ink)));
    editor.send(S::SCI_SETCARETLINEBACKALPHA, 14);
    editor.send(S::SCI_SETSELBACK, 1, engineColor(look.selection));
    editor.send(S::SCI_SETWHITESPACEFORE, 1, engineColor(mixed(look.window, ink, 40)));
}

} // namespace

QFont editorFont()
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    const QString faces[] = {font.family(),
                             QStringLiteral("DejaVu Sans Mono"),
                             QStringLiteral("Liberation Mono"),
                             QStringLiteral("Noto Sans Mono"),
                             QStringLiteral("Consolas"),
                             QStringLiteral("Courier New")};
    font.setPointSizeF(EditorFont().size);
    for (const QString &face : faces) {
        font.setFamily(face);
        if (QFontInfo(font).fixedPitch())
            break;
    }
    // A generic name such as "Monospace" is resolved here once, so that every style gets the same face.
    font.setFamily(QFontInfo(font).family());
    return font;
}

void setUpEditor(CodeEditor &editor)
{
    editor.send(S::SCI_SETCODEPAGE, S::SC_CP_UTF8);
    editor.send(S::SCI_CLEARALLCMDKEYS);
    editor.send(S::SCI_USEPOPUP, 0);
    editor.send(S::SCI_SETTABWIDTH, 4);
    editor.send(S::SCI_SETINDENT, 0);
    editor.send(S::SCI_SETTABINDENTS, 1);
    editor.send(S::SCI_SETBACKSPACEUNINDENTS, 0);
    // Room for the marks above capital letters.
    editor.send(S::SCI_SETEXTRAASCENT, 1);
    editor.send(S::SCI_SETEXTRADESCENT, 1);
    editor.send(S::SCI_SETSCROLLWIDTH, 1);
    editor.send(S::SCI_SETSCROLLWIDTHTRACKING, 1);
    editor.send(S::SCI_SETLAYOUTCACHE, S::SC_CACHE_PAGE);
    editor.send(S::SCI_SETWRAPMODE, S::SC_WRAP_NONE);
    editor.send(S::SCI_SETADDITIONALSELECTIONTYPING, 1);
    editor.send(S::SCI_SETVIRTUALSPACEOPTIONS, S::SCVS_RECTANGULARSELECTION);
    editor.send(S::SCI_SETFOLDFLAGS, S::SC_FOLDFLAG_LINEAFTER_CONTRACTED);
    setUpMargins(editor);
    setUpMarks(editor);
}

QString fixedPitchFace(const QString &name)
{
    constexpr qsizetype longest = 100; // no face has such a name
    if (!name.isEmpty() && name.size() <= longest) {
        const QFontInfo found((QFont(name)));
        if (found.fixedPitch() && found.family().compare(name, Qt::CaseInsensitive) == 0)
            return found.family();
    }
    return editorFont().family();
}

void dressEditor(CodeEditor &editor)
{
    const Look look(editor.properties(), editor.palette());
    dressText(editor, look);
    dressMargins(editor, look);
    dressMarks(editor, look);
    dressCaret(editor, look);
}

void dressStyle(CodeEditor &editor, int style, const TokenLook &look)
{
    const EditorFont &font = editor.properties().font;
    setColors(editor, style, look.ink, look.ground);
    editor.send(S::SCI_STYLESETBOLD, ulong(style), font.bold || look.bold ? 1 : 0);
    editor.send(S::SCI_STYLESETITALIC, ulong(style), font.italic || look.italic ? 1 : 0);
}

void setEditorLexer(CodeEditor &editor, Language language)
{
    // What another lexer said of the text would stay, and so would what its folds hide.
    if (editor.send(S::SCI_GETALLLINESVISIBLE) == 0)
        editor.send(S::SCI_FOLDALL, S::SC_FOLDACTION_EXPAND);
    // Markup has a styler of its own, which also says what folds.
    const bool own = language != Language::Plain;
    editor.send(S::SCI_SETLEXER, own ? S::SCLEX_CONTAINER : S::SCLEX_NULL);
    editor.send(S::SCI_CLEARDOCUMENTSTYLE);
    editor.send(S::SCI_STARTSTYLING, 0); // as text that has no styles yet
    editor.send(S::SCI_SETIDLESTYLING, own ? S::SC_IDLESTYLING_NONE : S::SC_IDLESTYLING_TOVISIBLE);
    editor.send(S::SCI_SETAUTOMATICFOLD,
                S::SC_AUTOMATICFOLD_SHOW | S::SC_AUTOMATICFOLD_CLICK
                    | (own ? 0 : S::SC_AUTOMATICFOLD_CHANGE));
    const std::pair<const char *, const char *> properties[] = {{"fold", "1"}, {"fold.compact", "0"}};
    for (const auto &[name, value] : properties)
        editor.SendScintilla(S::SCI_SETPROPERTY, name, value);
    editor.send(S::SCI_SETMARGINWIDTHN, foldMargin, own ? 16 : 0);
}

void fitMargins(CodeEditor &editor)
{
    const EditorProperties &properties = editor.properties();
    editor.send(S::SCI_SETMARGINWIDTHN, bookmarkMargin, properties.leftMargin ? leftMarginWidth : 0);
    const bool any = properties.leftMargin || properties.lineNumbering
        || editor.send(S::SCI_GETMARGINWIDTHN, foldMargin) != 0;
    editor.send(S::SCI_SETMARGINWIDTHN, dividerMargin, any ? 1 : 0);
}

void strikeText(CodeEditor &editor)
{
    const long length = editor.send(S::SCI_GETLENGTH);
    if (length == 0)
        return;
    const bool struck = editor.properties().font.strikethrough;
    // Nearly always there is nothing to do.
    if (!struck && editor.send(S::SCI_INDICATORVALUEAT, strikeIndicator, length / 2) == 0)
        return;
    editor.send(S::SCI_SETINDICATORCURRENT, strikeIndicator);
    editor.send(S::SCI_SETINDICATORVALUE, 1);
    editor.send(struck ? S::SCI_INDICATORFILLRANGE : S::SCI_INDICATORCLEARRANGE, 0, length);
}

} // namespace control
