#include "platform/control/editor_look.h"

#include "platform/control/code_editor.h"

#include <QFont>
#include <QFontDatabase>
#include <QFontInfo>
#include <QPalette>
#include <algorithm>
#include <array>

namespace control {

namespace {

using S = QsciScintillaBase;

// What a piece of text is, to the eye.
enum Role
{
    Text,
    Tag,
    Attribute,
    Value,
    Entity,
    Comment,
    Keyword,
    Number,
    Faulty,
    RoleCount
};

struct Scheme
{
    std::array<QRgb, RoleCount> roles;
    QRgb highlight;
    QRgb bookmark;
    QRgb marginText;
    QRgb tagMark;
    // How much of the text colour is mixed into the ground, in percent.
    int marginShade;
    int guideShade;
};

// Text and Value follow the palette; their entries stand in for nothing.
constexpr Scheme lightScheme{
    {0x000000, 0x800000, 0x0000FF, 0x000000, 0x008000, 0x808080, 0x0000C0, 0x000000, 0xC00000},
    0xFFFF00,
    0x2F6FB7,
    0x6E6E6E,
    0x3C78C8,
    6,
    20};
constexpr Scheme darkScheme{
    {0xE0E0E0, 0xF08A7A, 0x7FB8FF, 0xE0E0E0, 0x8CCB7E, 0x9A9A9A, 0xB9A6FF, 0xE0E0E0, 0xFF6B6B},
    0x665200,
    0x6FA8E8,
    0x9A9A9A,
    0x8FBCF5,
    5,
    25};

struct StyleRow
{
    int first;
    int last;
    Role role;
};

// Style numbers that the XML and HTML lexers give to the text; the last three ranges are scripts in HTML
// pages.
constexpr StyleRow styleRows[] = {
    {0, 0, Text}, // between the tags
    {1, 2, Tag},         {3, 4, Attribute}, {5, 5, Value}, // a number as an attribute's value
    {6, 7, Value},       {8, 8, Keyword}, // "=" and the like in a tag
    {9, 9, Comment},     {10, 10, Entity},  {11, 11, Tag}, // the end of an empty tag
    {12, 13, Keyword}, // instructions
    {14, 14, Text},      {15, 16, Keyword}, {17, 17, Text}, // CDATA
    {18, 18, Keyword},   {19, 19, Value},   {20, 20, Comment}, {21, 22, Keyword}, // declarations
    {23, 23, Attribute}, {24, 25, Value},   {26, 26, Faulty},  {27, 28, Entity},
    {29, 30, Comment},   {31, 31, Keyword}, {40, 41, Text},    {42, 44, Comment},
    {45, 46, Text},      {47, 47, Keyword}, {48, 53, Entity},
};

QColor mixed(const QColor &ground, const QColor &other, int percent)
{
    const auto mix = [percent](int a, int b) { return (a * (100 - percent) + b * percent) / 100; };
    return {mix(ground.red(), other.red()), mix(ground.green(), other.green()),
            mix(ground.blue(), other.blue())};
}

// The engine's colours are 0x00BBGGRR.
long engineColor(const QColor &color) { return color.red() | (color.green() << 8) | (color.blue() << 16); }

void setUpMargins(CodeEditor &editor)
{
    editor.send(S::SCI_SETMARGINTYPEN, bookmarkMargin, S::SC_MARGIN_SYMBOL);
    editor.send(S::SCI_SETMARGINMASKN, bookmarkMargin, 1 << bookmarkMarker);
    editor.send(S::SCI_SETMARGINWIDTHN, bookmarkMargin, 16);
    editor.send(S::SCI_SETMARGINSENSITIVEN, bookmarkMargin, 1);
    editor.send(S::SCI_SETMARGINTYPEN, numberMargin, S::SC_MARGIN_NUMBER);
    editor.send(S::SCI_SETMARGINMASKN, numberMargin, 0);
    editor.send(S::SCI_SETMARGINTYPEN, foldMargin, S::SC_MARGIN_SYMBOL);
    editor.send(S::SCI_SETMARGINMASKN, foldMargin, long(S::SC_MASK_FOLDERS));
    editor.send(S::SCI_SETMARGINSENSITIVEN, foldMargin, 1);
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
}

void setFont(CodeEditor &editor, int style)
{
    const QFont font = editorFont();
    const QByteArray face = font.family().toUtf8();
    editor.SendScintilla(S::SCI_STYLESETFONT, uintptr_t(style), face.constData());
    editor.send(S::SCI_STYLESETSIZEFRACTIONAL, style, long(font.pointSizeF() * 100));
}

void setColors(CodeEditor &editor, int style, const QColor &ink, const QColor &ground)
{
    editor.send(S::SCI_STYLESETFORE, style, engineColor(ink));
    editor.send(S::SCI_STYLESETBACK, style, engineColor(ground));
}

void dressText(CodeEditor &editor, const Scheme &scheme, const QColor &ink, const QColor &ground)
{
    setFont(editor, S::STYLE_DEFAULT);
    setColors(editor, S::STYLE_DEFAULT, ink, ground);
    editor.send(S::SCI_STYLECLEARALL);
    for (const StyleRow &row : styleRows)
        for (int style = row.first; style <= row.last; ++style)
            if (row.role != Text && row.role != Value)
                editor.send(S::SCI_STYLESETFORE, style, engineColor(QColor(scheme.roles[row.role])));
    setColors(editor, S::STYLE_LINENUMBER, QColor(scheme.marginText), mixed(ground, ink, scheme.marginShade));
    setColors(editor, S::STYLE_INDENTGUIDE, mixed(ground, ink, scheme.guideShade), ground);
    setColors(editor, S::STYLE_BRACELIGHT, QColor(scheme.tagMark), ground);
    editor.send(S::SCI_STYLESETBOLD, S::STYLE_BRACELIGHT, 1);
}

void dressMarks(CodeEditor &editor, const Scheme &scheme, const QColor &ink, const QColor &ground)
{
    const QColor margin = mixed(ground, ink, scheme.marginShade);
    editor.send(S::SCI_SETFOLDMARGINCOLOUR, 1, engineColor(margin));
    editor.send(S::SCI_SETFOLDMARGINHICOLOUR, 1, engineColor(margin));
    for (int marker = S::SC_MARKNUM_FOLDEREND; marker <= int(S::SC_MARKNUM_FOLDEROPEN); ++marker) {
        editor.send(S::SCI_MARKERSETFORE, marker, engineColor(margin));
        editor.send(S::SCI_MARKERSETBACK, marker, engineColor(QColor(scheme.marginText)));
    }
    editor.send(S::SCI_MARKERSETFORE, bookmarkMarker, engineColor(QColor(scheme.bookmark)));
    editor.send(S::SCI_MARKERSETBACK, bookmarkMarker, engineColor(QColor(scheme.bookmark)));
    editor.send(S::SCI_MARKERSETBACK, highlightMarker, engineColor(QColor(scheme.highlight)));
    editor.send(S::SCI_INDICSETFORE, tagIndicator, engineColor(QColor(scheme.tagMark)));
    editor.send(S::SCI_INDICSETALPHA, tagIndicator, 50);
    editor.send(S::SCI_INDICSETOUTLINEALPHA, tagIndicator, 140);
}

// The caret's line is tinted over its ground, so that a highlighted line shows through.
void dressCaret(CodeEditor &editor, const QColor &ink, const QColor &ground, const QColor &selected)
{
    editor.send(S::SCI_SETCARETFORE, ulong(engineColor(ink)));
    editor.send(S::SCI_SETCARETWIDTH, 2);
    editor.send(S::SCI_SETCARETLINEVISIBLE, 1);
    editor.send(S::SCI_SETCARETLINEBACK, ulong(engineColor(ink)));
    editor.send(S::SCI_SETCARETLINEBACKALPHA, 14);
    editor.send(S::SCI_SETSELBACK, 1, engineColor(mixed(ground, selected, 40)));
    editor.send(S::SCI_SETWHITESPACEFORE, 1, engineColor(mixed(ground, ink, 40)));
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
    font.setPointSizeF(11);
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
    editor.send(S::SCI_SETIDLESTYLING, S::SC_IDLESTYLING_TOVISIBLE);
    editor.send(S::SCI_SETWRAPMODE, S::SC_WRAP_NONE);
    editor.send(S::SCI_SETADDITIONALSELECTIONTYPING, 1);
    editor.send(S::SCI_SETVIRTUALSPACEOPTIONS, S::SCVS_RECTANGULARSELECTION);
    editor.send(S::SCI_SETAUTOMATICFOLD,
                S::SC_AUTOMATICFOLD_SHOW | S::SC_AUTOMATICFOLD_CLICK | S::SC_AUTOMATICFOLD_CHANGE);
    editor.send(S::SCI_SETFOLDFLAGS, S::SC_FOLDFLAG_LINEAFTER_CONTRACTED);
    setUpMargins(editor);
    setUpMarks(editor);
}

void dressEditor(CodeEditor &editor, const QPalette &palette)
{
    const QColor ink = palette.color(QPalette::Text);
    const QColor ground = palette.color(QPalette::Base);
    const Scheme &scheme = ground.lightness() < 128 ? darkScheme : lightScheme;
    dressText(editor, scheme, ink, ground);
    dressMarks(editor, scheme, ink, ground);
    dressCaret(editor, ink, ground, palette.color(QPalette::Highlight));
}

void setEditorLexer(CodeEditor &editor, Language language)
{
    const int lexers[] = {S::SCLEX_NULL, S::SCLEX_XML, S::SCLEX_HTML};
    editor.send(S::SCI_SETLEXER, lexers[int(language)]);
    const std::pair<const char *, const char *> properties[]
        = {{"fold", "1"}, {"fold.html", "1"}, {"fold.compact", "0"}, {"lexer.xml.allow.scripts", "0"}};
    for (const auto &[name, value] : properties)
        editor.SendScintilla(S::SCI_SETPROPERTY, name, value);
    editor.SendScintilla(S::SCI_SETKEYWORDS, uintptr_t(5), "DOCTYPE doctype ELEMENT ATTLIST ENTITY NOTATION");
    if (language == Language::Html)
        editor.SendScintilla(
            S::SCI_SETKEYWORDS, uintptr_t(1),
            "async await break case catch class const continue default delete do else export extends false "
            "finally for from function if import in instanceof let new null of return static super switch "
            "this "
            "throw true try typeof undefined var void while yield");
    editor.send(S::SCI_SETMARGINWIDTHN, foldMargin, language == Language::Plain ? 0 : 16);
}

void fitNumberMargin(CodeEditor &editor, bool shown)
{
    const QByteArray widest(std::max<qsizetype>(QByteArray::number(qlonglong(editor.lineCount())).size(), 3),
                            '9');
    const long digits
        = editor.SendScintilla(S::SCI_TEXTWIDTH, uintptr_t(S::STYLE_LINENUMBER), widest.constData());
    editor.send(S::SCI_SETMARGINWIDTHN, numberMargin, shown ? digits + 10 : 0);
}

} // namespace control
