// The parser holds every attribute of an element against every other, and so every value that an attribute is
// declared to choose from, so that their numbers need bounds.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <optional>

namespace dom {

constexpr qsizetype mostAttributes = 10'000;
constexpr qsizetype mostChoices = 10'000;

// Where the first start tag with more than mostAttributes begins; nothing where there is none. Costs next to
// nothing in a text that has no such long tags. A tag within a comment or the like counts only with
// isMarkup unset, as in a piece of text that need not be a whole document.
std::optional<qsizetype> findTooManyAttributes(QByteArrayView utf8, bool isMarkup = true);

struct Choice
{
    qsizetype count = 0; // the signs between the values
    qsizetype at = 0; // where the last of them stands
};

// The longest list of values in a text of declarations, or in a part of one.
Choice longestChoice(QByteArrayView declarations);

// The sentences for what is beyond the bounds; who says what has so many attributes.
QString tooManyAttributes(const QString &who);
QString tooManyChoices();

} // namespace dom
