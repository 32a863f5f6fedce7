// The parser holds every attribute of an element against every other, and so every value that an attribute is
// declared to choose from, so that their numbers need bounds.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <optional>

namespace dom {

constexpr qsizetype mostAttributes = 10'000;
constexpr qsizetype mostChoices = 10'000;

// The text without most of the attributes of such tags as have a great many, byte for byte in the same place:
// blanks stand for those that are right by themselves and cannot be the same as others. It is well-formed
// exactly when the text is. Nothing where no tag has so many; and that costs next to nothing.
std::optional<QByteArray> withFewerAttributes(QByteArrayView document);

// Where the first start tag with more than mostAttributes begins; nothing where there is none. Costs next to
// nothing in a text that has no such long tags. In a piece of text that need not be a whole document a tag
// within a comment or the like counts too.
std::optional<qsizetype> findTooManyAttributes(QByteArrayView utf8, bool isDocument = true);

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
