#include "platform/dom/names.h"

#include <QList>

#include <algorithm>
#include <iterator>

namespace dom {

namespace {

struct Range
{
    char32_t first;
    char32_t last;
};

// The XML 1.0 (fifth edition) production of name start characters, without the colon.
constexpr Range startRanges[] = {
    {'A', 'Z'},       {'_', '_'},       {'a', 'z'},       {0xC0, 0xD6},     {0xD8, 0xF6},
    {0xF8, 0x2FF},    {0x370, 0x37D},   {0x37F, 0x1FFF},  {0x200C, 0x200D}, {0x2070, 0x218F},
    {0x2C00, 0x2FEF}, {0x3001, 0xD7FF}, {0xF900, 0xFDCF}, {0xFDF0, 0xFFFD}, {0x10000, 0xEFFFF},
};

// What a name may hold beyond that from its second character on.
constexpr Range furtherRanges[] = {
    {'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040},
};

template <std::size_t N>
bool isIn(const Range (&ranges)[N], char32_t c)
{
    return std::any_of(std::begin(ranges), std::end(ranges),
                       [c](const Range &range) { return c >= range.first && c <= range.last; });
}

bool isAllowed(char32_t c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) || (c >= 0xE000 && c <= 0xFFFD)
        || (c >= 0x10000 && c <= 0x10FFFF);
}

} // namespace

bool allCharactersAllowed(QStringView text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            ++i;
            continue;
        }
        if (!isAllowed(c.unicode()))
            return false;
    }
    return true;
}

bool isNCName(QStringView name)
{
    const auto characters = name.toUcs4();
    if (characters.isEmpty() || !isIn(startRanges, characters.first()))
        return false;
    return std::all_of(characters.begin(), characters.end(),
                       [](char32_t c) { return isIn(startRanges, c) || isIn(furtherRanges, c); });
}

bool isQName(QStringView name)
{
    const qsizetype colon = name.indexOf(u':');
    if (colon < 0)
        return isNCName(name);
    return isNCName(name.first(colon)) && isNCName(name.sliced(colon + 1));
}

} // namespace dom
