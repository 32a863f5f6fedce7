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
};

} // namespace

std::span<const TabRange> tabRanges() { return tabs; }

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
