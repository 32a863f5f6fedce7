// What a user can choose about a code editor: colours, styles, face and habits. A plain value; the editor
// shows the one it was given last.
#pragma once

#include <QString>
#include <array>
#include <span>

namespace control {

inline constexpr int colourSlots = 31;
inline constexpr int styleSlots = 12;

// A colour is 0x00BBGGRR; this is none of its own, which follows the palette.
inline constexpr qint32 noColour = -1;

// Numbers of the colour slots; what is coloured is told by colourSlotTable().
enum ColourSlot
{
    WindowGround,
    LeftMarginGround,
    BookmarkInk,
    BookmarkGround,
    TextInk,
    TextGround,
    NumberInk,
    NumberGround,
    KeywordInk,
    KeywordGround,
    OperatorInk,
    OperatorGround,
    ScopeInk,
    ScopeGround,
    CommentInk,
    CommentGround,
    StringInk,
    StringGround,
    TagTextInk,
    TagTextGround,
    EntityInk,
    EntityGround,
    TagNameInk,
    TagNameGround,
    AttributeInk,
    AttributeGround,
    LineNumberInk,
    LineNumberGround,
    DividerInk,
    VerticalDividerInk,
    HighlightGround
};

// Numbers of the style slots.
enum StyleSlot
{
    KeywordStyle,
    NumberStyle,
    OperatorStyle,
    ScopeStyle,
    StringStyle,
    CommentStyle,
    TagNameStyle,
    TagTextStyle,
    EntityStyle,
    AttributeStyle,
    TextStyle,
    LineNumberStyle
};

// A style number is 0 or the sum of these.
enum StyleBit
{
    Bold = 1,
    Italic = 2
};
inline constexpr int highestStyle = Bold | Italic;

// How lines are numbered.
enum class NumberingStyle
{
    Decimal = 1,
    Hexadecimal = 2,
    EveryTenth = 3, // and the caret's line
    FromCaret = 4 // how far it is from the caret
};

struct ColourSlotRow
{
    const char *name; // under which it is kept
    const char *label; // for the user
    qint32 first; // before anybody chose another
};

struct StyleSlotRow
{
    const char *label;
    int first;
};

// By slot number.
std::span<const ColourSlotRow, colourSlots> colourSlotTable();
std::span<const StyleSlotRow, styleSlots> styleSlotTable();

struct EditorFont
{
    QString name; // the face wished for; what is shown is always of fixed pitch
    double size = 11.25; // points
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikethrough = false;

    bool operator==(const EditorFont &) const = default;
};

struct EditorProperties
{
    EditorProperties(); // as they are before anybody chose others

    std::array<qint32, colourSlots> colours{};
    std::array<int, styleSlots> styles{};
    EditorFont font;

    bool selectionBounds = true; // the first and last selected lines are marked in the left margin
    bool leftMargin = true; // the one with the bookmarks
    bool lineNumbering = true;
    bool lineToolTips = true; // the line reached is told while the text is scrolled by its bar
    qint32 numberingStyle = int(NumberingStyle::Decimal); // any other number counts as decimal
    qint32 numberingStart = 1; // the number of the first line
    bool whiteSpace = false; // blanks are shown as dots and arrows

    // What is typed along for the user.
    bool closeOnSlash = true; // "</" is completed to the closing tag
    bool closeOnBracket = false; // ">" of a start tag brings its closing tag
    bool renameBoth = true; // a tag's name is changed in its partner too
    bool autoIndent = true; // a new line begins where the one before it did
    bool offerNames = true; // names known from the document are offered while typing
    bool dragText = true; // a selection can be dragged to another place

    bool operator==(const EditorProperties &) const = default;
};

} // namespace control
