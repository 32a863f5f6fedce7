// The options of Tidy that this program knows. An option is its index: item keys, tabs and the kind of value
// follow from the place in the table (option_table.cpp), so that the order there must not change.
#pragma once

#include <QString>
#include <QStringList>

#include <span>

namespace tidy {

enum class OptionTab
{
    Markup,
    Warnings,
    Layout,
    Encoding,
    Miscellaneous,
    Other,
    None
};

// What an option takes. Those before FixedYesNo are numbered as the editors of the options dialog are.
enum class OptionKind
{
    AutoYesNo,
    Doctype,
    Encoding,
    Repeat,
    NewLine,
    Number,
    Text,
    TagList,
    YesNo,
    TagKind,
    Sorting,
    FixedYesNo, // set by the program itself: shown, never edited
    None
};

struct Option
{
    const char *name; // as in a configuration file
    const char *builtIn; // the default that the catalogue lists; empty where there is none
    OptionTab tab;
    OptionKind kind;
    const char *description; // UTF-8; may be empty

    QString nameText() const { return QString::fromUtf8(name); }
    QString builtInText() const { return QString::fromUtf8(builtIn); }
    QString descriptionText() const { return QString::fromUtf8(description); }
};

// A tab of the options dialog and the indexes that it lists, both ends included.
struct TabRange
{
    OptionTab tab;
    const char *caption;
    int first;
    int last;
};

inline constexpr int listedOptions = 77; // 0 to 76 stand on the first five tabs
inline constexpr int outputFileOption = 77; // in the catalogue, on no tab
inline constexpr int sentinelOption = 78; // never shown or written
inline constexpr int furtherOptions = 79; // the first of those that came later, up to the last entry
inline constexpr int largestNumber = 32767; // of a number's spin control; the smallest is 0

// All entries: 79 up to the sentinel, and behind it those of the installed Tidy that came later.
std::span<const Option> optionCatalogue();

// Whether an index stands on a tab.
bool isListed(int index);

// What an option is at while nothing is set: its built-in default, except where that would lose or respell
// something of the text or is not what happens. "auto" where the text or the kind of output decides. Empty
// for what is not listed.
QString defaultValue(int index);

// The tabs in the order of their indexes (the dialog shows them in another).
std::span<const TabRange> tabRanges();

// "50_" for 50. lstkey is the inverse; -1 for what is no key.
QString itemKey(int index);
int lstkey(const QString &key);

// The index of a name, whole and in any case; -1 when there is none. Index 0 is compared last.
int findOption(const QString &name);

// The tab that a found index leads to; whatever stands on no tab (-1 included) leads to Miscellaneous.
OptionTab tabForIndex(int index);

// The values that a kind's drop-down list offers, in order; empty for kinds of free text and for fixed ones.
QStringList offeredValues(OptionKind kind);

// The item of a doctype's list that stands for a free text.
QString userDoctype();

// Tag names typed with any mix of commas and blanks, as names with a comma and a blank between them.
QString normalisedTagList(const QString &typed);

} // namespace tidy
