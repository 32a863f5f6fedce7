#include "platform/control/editor_properties.h"

#include <algorithm>

namespace control {

namespace {

constexpr qint32 black = 0;
constexpr qint32 lightGrey = 0xC0C0C0;
constexpr qint32 grey = 0x808080;
constexpr qint32 blue = 0xFF0000;
constexpr qint32 darkRed = 0x000080;
constexpr qint32 green = 0x008000;
constexpr qint32 white = 0xFFFFFF;
constexpr qint32 yellow = 0x00FFFF;

constexpr ColourSlotRow colours[colourSlots] = {
    {"window", "Window background", noColour},
    {"left", "Left margin", lightGrey},
    {"bookmark", "Bookmark", noColour},
    {"bookmarkbk", "Bookmark background", noColour},
    {"text", "Text", black},
    {"textbk", "Text background", noColour},
    {"number", "Number", black},
    {"numberbk", "Number background", noColour},
    {"keyword", "Keyword", blue},
    {"keywordbk", "Keyword background", noColour},
    {"operator", "Operator", blue},
    {"operatorbk", "Operator background", noColour},
    {"scope", "Scope", blue},
    {"scopebk", "Scope background", noColour},
    {"comment", "Comment", grey},
    {"commentbk", "Comment background", noColour},
    {"string", "String", black},
    {"stringbk", "String background", noColour},
    {"tagtxt", "Text in a tag", darkRed},
    {"tagtxtbk", "Text in a tag, background", noColour},
    {"tagent", "Entity", green},
    {"tagentbk", "Entity background", noColour},
    {"tagele", "Element name", darkRed},
    {"tagelebk", "Element name background", noColour},
    {"tagattrib", "Attribute name", blue},
    {"tagattribbk", "Attribute name background", noColour},
    {"linenum", "Line number", white},
    {"linenumbk", "Line number background", lightGrey},
    {"divider", "Dividers between blocks", noColour},
    {"vdivider", "Divider beside the margin", noColour},
    {"highlight", "Highlighted line", yellow},
};

constexpr StyleSlotRow styles[styleSlots] = {
    {"Keyword", Bold},   {"Number", 0},          {"Operator", 0},      {"Scope", 0},  {"String", 0},
    {"Comment", Italic}, {"Element name", Bold}, {"Text in a tag", 0}, {"Entity", 0}, {"Attribute name", 0},
    {"Text", 0},         {"Line number", 0},
};

} // namespace

std::span<const ColourSlotRow, colourSlots> colourSlotTable() { return colours; }

std::span<const StyleSlotRow, styleSlots> styleSlotTable() { return styles; }

EditorProperties::EditorProperties()
{
    std::transform(std::begin(control::colours), std::end(control::colours), colours.begin(),
                   [](const ColourSlotRow &row) { return row.first; });
    std::transform(std::begin(control::styles), std::end(control::styles), styles.begin(),
                   [](const StyleSlotRow &row) { return row.first; });
}

} // namespace control
