#include "editor/colour_classes.h"

#include "platform/control/colour_reading.h"

#include <algorithm>

namespace editor {

namespace {

using namespace control;

// In the order of the list.
// clang-format off
constexpr ColourClass classes[] = {
    {-1, WindowGround, 9, "", "What the text stands on, and the room beside and below it."},
    {-1, LeftMarginGround, sampleBookmarkLine, "  ", "The strip to the left of the text, where bookmarks are shown."},
    {BookmarkInk, BookmarkGround, sampleBookmarkLine, "", "The mark of a bookmark in the left margin, and the background of its line."},
    {TextInk, TextGround, 4, "Text ", "The text between the tags."},
    {NumberInk, NumberGround, 5, "3", "A number without quotes: the value of an attribute, or in a script."},
    {KeywordInk, KeywordGround, 1, "DOCTYPE", "The words of declarations, instructions and scripts."},
    {OperatorInk, OperatorGround, 5, "*", "A sign between names and numbers in a script."},
    {ScopeInk, ScopeGround, 6, "<![CDATA[ if (a < b) ]]>", "A CDATA section."},
    {CommentInk, CommentGround, 2, "<!-- A comment -->", "A comment."},
    {StringInk, StringGround, 3, "\"en\"", "A value in quotes."},
    {TagTextInk, TagTextGround, 3, "=", "What stands in a tag beside names and values."},
    {EntityInk, EntityGround, 4, "&copy;", "A reference to an entity or a character."},
    {TagNameInk, TagNameGround, 4, "<title", "The name of an element, with its brackets."},
    {AttributeInk, AttributeGround, 3, "lang", "The name of an attribute."},
    {LineNumberInk, LineNumberGround, 0, "", "The numbers to the left of the text, while they are shown."},
    {DividerInk, -1, 3, "", "The line between blocks of the text, below a folded element."},
    {VerticalDividerInk, -1, 0, "", "The line between the margins and the text."},
    {-1, HighlightGround, sampleHighlightLine, "", "The line that is pointed out, as where an error was found."},
};
// clang-format on

} // namespace

QString ColourClass::label() const
{
    return QString::fromLatin1(colourSlotTable()[size_t(ink >= 0 ? ink : ground)].label);
}

std::span<const ColourClass> colourClasses() { return classes; }

const ColourClass *findColourClass(const QString &label)
{
    const auto *found = std::find_if(std::begin(classes), std::end(classes),
                                     [&label](const ColourClass &row) { return row.label() == label; });
    return found == std::end(classes) ? nullptr : found;
}

QColor shownIn(const Look &look, int slot)
{
    for (int token = 0; token < tokenCount; ++token) {
        const TokenRow &row = tokenTable()[size_t(token)];
        if (slot == row.ink || slot == row.ground)
            return slot == row.ink ? look.token(Token(token)).ink : look.token(Token(token)).ground;
    }
    const std::pair<int, QColor> others[] = {
        {WindowGround, look.window},       {LeftMarginGround, look.margin},
        {BookmarkInk, look.bookmarkInk},   {BookmarkGround, look.bookmarkGround},
        {DividerInk, look.divider},        {VerticalDividerInk, look.verticalDivider},
        {HighlightGround, look.highlight},
    };
    return std::find_if(std::begin(others), std::end(others) - 1,
                        [slot](const auto &row) { return row.first == slot; })
        ->second;
}

} // namespace editor
