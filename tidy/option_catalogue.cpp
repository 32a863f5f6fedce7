#include "tidy/option_catalogue.h"

#include <algorithm>

namespace tidy {

namespace {

constexpr TabRange tabs[] = {
    {OptionTab::Markup, "Markup (HTML, XHTML, XML)", 0, 46},
    {OptionTab::Warnings, "Warnings", 47, 49},
    {OptionTab::Layout, "Layout (Pretty Print)", 50, 62},
    {OptionTab::Encoding, "Character Encoding", 63, 69},
    {OptionTab::Miscellaneous, "Miscellaneous", 70, 76},
    {OptionTab::Other, "Other options of the installed Tidy", furtherOptions, furtherOptions + 22},
};

struct Standing
{
    const char *name;
    const char *value;
};

// What differs from the built-in default while nothing is set.
constexpr Standing standing[] = {
    {"ascii-chars", "no"}, // dashes and quotes stay what they are
    {"char-encoding", "utf8"}, // every character stays
    {"drop-empty-elements", "no"}, // a style sheet may make pictures of them
    {"fix-bad-comments", "auto"}, // only where the output does not allow them
    {"force-output", "yes"},       {"input-encoding", "utf8"},
    {"literal-attributes", "yes"}, // a blank in a value counts, and fields show it
    {"merge-divs", "auto"}, // attributes of the inner one are kept
    {"newline", "auto"}, // that of the text
    {"numeric-entities", "auto"}, // only where the output has no names for them
    {"output-encoding", "utf8"},   {"repeated-attributes", "keep-first"}, // as browsers do
};

struct Offer
{
    OptionKind kind;
    const char *values; // separated by blanks
};

constexpr Offer offers[] = {
    {OptionKind::AutoYesNo, "auto yes no"},
    {OptionKind::Doctype, "auto omit strict loose transitional (user)"},
    {OptionKind::Encoding,
     "ascii latin0 latin1 raw utf8 iso202 utf16le utf16be utf16 mac win1252 ibm858 big5 shiftjis"},
    {OptionKind::Repeat, "keep-first keep-last"},
    {OptionKind::NewLine, "LF CRLF CR"},
    {OptionKind::YesNo, "yes no"},
    {OptionKind::TagKind, "no blocklevel empty inline pre"},
    {OptionKind::Sorting, "none alpha"},
};

} // namespace

std::span<const TabRange> tabRanges() { return tabs; }

bool isListed(int index)
{
    return std::any_of(std::begin(tabs), std::end(tabs), [index](const TabRange &range) {
        return range.first <= index && index <= range.last;
    });
}

QString defaultValue(int index)
{
    if (!isListed(index))
        return {};
    const Option &option = optionCatalogue()[size_t(index)];
    const QString name = option.nameText();
    const auto is = [&name](const Standing &set) { return name == QLatin1StringView(set.name); };
    const auto *found = std::find_if(std::begin(standing), std::end(standing), is);
    return found == std::end(standing) ? option.builtInText() : QString::fromLatin1(found->value);
}

QString itemKey(int index) { return QString::number(index) + QLatin1Char('_'); }

int lstkey(const QString &key)
{
    bool number = false;
    const int index = QString(key).remove(QLatin1Char('_')).toInt(&number);
    return number ? index : -1;
}

int findOption(const QString &name)
{
    const std::span<const Option> options = optionCatalogue();
    const int count = int(options.size());
    for (int step = 1; step <= count; ++step) {
        const int index = step % count;
        if (name.compare(QLatin1StringView(options[size_t(index)].name), Qt::CaseInsensitive) == 0)
            return index;
    }
    return -1;
}

OptionTab tabForIndex(int index)
{
    const auto holds = [index](const TabRange &range) { return range.first <= index && index <= range.last; };
    const auto *found = std::find_if(std::begin(tabs), std::end(tabs), holds);
    return found == std::end(tabs) ? OptionTab::Miscellaneous : found->tab;
}

QStringList offeredValues(OptionKind kind)
{
    for (const Offer &offer : offers) {
        if (offer.kind == kind)
            return QString::fromLatin1(offer.values).split(QLatin1Char(' '));
    }
    return {};
}

QString userDoctype() { return QStringLiteral("(user)"); }

QString normalisedTagList(const QString &typed)
{
    const QLatin1Char blank(' ');
    QString list = typed;
    list.replace(QLatin1Char(','), blank);
    while (list.contains(QLatin1StringView("  ")))
        list.replace(QLatin1StringView("  "), QLatin1StringView(" "));
    list.replace(blank, QLatin1StringView(", "));
    if (list.endsWith(blank))
        list.chop(2);
    return list;
}

} // namespace tidy
