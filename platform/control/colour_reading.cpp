#include "platform/control/colour_reading.h"

#include <QPalette>
#include <algorithm>
#include <cmath>

namespace control {

namespace {

constexpr TokenRow tokenRows[tokenCount] = {
    {TextInk, TextGround, TextStyle},
    {NumberInk, NumberGround, NumberStyle},
    {KeywordInk, KeywordGround, KeywordStyle},
    {OperatorInk, OperatorGround, OperatorStyle},
    {ScopeInk, ScopeGround, ScopeStyle},
    {CommentInk, CommentGround, CommentStyle},
    {StringInk, StringGround, StringStyle},
    {TagTextInk, TagTextGround, TagTextStyle},
    {EntityInk, EntityGround, EntityStyle},
    {TagNameInk, TagNameGround, TagNameStyle},
    {AttributeInk, AttributeGround, AttributeStyle},
    {LineNumberInk, LineNumberGround, LineNumberStyle},
};

// On what is darker than this, white reads better than black.
constexpr double darkLuminance = 0.18;

double luminance(const QColor &colour)
{
    const auto linear = [](float part) {
        return part <= 0.04045F ? part / 12.92 : std::pow((double(part) + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

bool isDark(const QColor &colour) { return luminance(colour) < darkLuminance; }

// The same hue in another lightness, from 0 to 1.
QColor inLightness(const QColor &colour, float lightness)
{
    // A pale colour of full saturation glares.
    const float saturation = colour.hslSaturationF() * (lightness > colour.lightnessF() ? 0.85F : 1.0F);
    return QColor::fromHslF(colour.hslHueF(), saturation, lightness);
}

// As much contrast as the colour had where it came from, within what is pleasant to read.
double wantedContrast(const QColor &ink, bool darkGround)
{
    if (!darkGround)
        return 5;
    if (ink.hslSaturationF() > 0)
        return 6.5;
    return std::clamp(contrast(ink, Qt::white), 5.0, 11.0);
}

// The ink itself, or its hue in a lightness that can be read on the ground.
QColor readable(const QColor &ink, const QColor &ground)
{
    const bool dark = isDark(ground);
    const double enough = dark ? 4.5 : 3;
    if (contrast(ink, ground) >= enough)
        return ink;
    constexpr int steps = 64;
    const float from = ink.lightnessF();
    const float to = dark ? 1 : 0;
    const double wanted = wantedContrast(ink, dark);
    for (int step = 1; step < steps; ++step) {
        const QColor next = inLightness(ink, from + (to - from) * float(step) / steps);
        if (contrast(next, ground) >= wanted)
            return next;
    }
    return dark ? Qt::white : Qt::black;
}

// The ground itself, or its hue dark enough to lie quietly on dark surroundings.
QColor givingWay(const QColor &ground, const QColor &surroundings, double mostContrast)
{
    if (!isDark(surroundings) || contrast(ground, surroundings) <= mostContrast)
        return ground;
    constexpr int steps = 64;
    for (int step = 1; step < steps; ++step) {
        const QColor next = inLightness(ground, ground.lightnessF() * float(steps - step) / steps);
        if (contrast(next, surroundings) <= mostContrast)
            return next;
    }
    return surroundings;
}

QColor colourOf(qint32 value) { return QColor(value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF); }

// The chosen colours, each with what takes its place when there is none.
class Chosen
{
public:
    explicit Chosen(const EditorProperties &properties) : colours_(properties.colours) { }

    QColor ink(ColourSlot slot, const QColor &otherwise, const QColor &ground) const
    {
        const QColor colour = follows(slot) ? otherwise : colourOf(value(slot));
        if (isOwn(slot))
            return colour;
        const QColor shown = readable(colour, ground);
        // Black that cannot be read is simply the colour of text.
        return shown != colour && colour == Qt::black ? readable(otherwise, ground) : shown;
    }
    QColor ground(ColourSlot slot, const QColor &otherwise, const QColor &around, double contrast) const
    {
        if (follows(slot))
            return otherwise;
        return isOwn(slot) ? colourOf(value(slot)) : givingWay(colourOf(value(slot)), around, contrast);
    }
    bool isOwn(ColourSlot slot) const
    {
        return !follows(slot) && value(slot) != colourSlotTable()[slot].first;
    }

private:
    qint32 value(ColourSlot slot) const { return colours_[slot]; }
    // Other negative numbers than noColour name colours of a desktop's palette.
    bool follows(ColourSlot slot) const { return value(slot) < 0; }

    const std::array<qint32, colourSlots> &colours_;
};

// Where a ground stops being quiet, and where a mark on it stops being gentle.
constexpr double marginContrast = 1.25;
constexpr double highlightContrast = 1.7;

TokenLook tokenLook(const Chosen &chosen, const EditorProperties &properties, Token token, const QColor &ink,
                    const QColor &ground)
{
    const TokenRow &row = tokenRows[size_t(token)];
    TokenLook look;
    look.ground = chosen.ground(row.ground, ground, ground, marginContrast);
    look.ink = chosen.ink(row.ink, ink, look.ground);
    const int number = properties.styles[row.style];
    const int style = number < 0 || number > highestStyle ? 0 : number;
    look.bold = (style & Bold) != 0;
    look.italic = (style & Italic) != 0;
    return look;
}

} // namespace

std::span<const TokenRow, tokenCount> tokenTable() { return tokenRows; }

double contrast(const QColor &one, const QColor &other)
{
    const double first = luminance(one) + 0.05;
    const double second = luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

QColor mixed(const QColor &ground, const QColor &other, int percent)
{
    const auto mix = [percent](int a, int b) { return (a * (100 - percent) + b * percent) / 100; };
    return {mix(ground.red(), other.red()), mix(ground.green(), other.green()),
            mix(ground.blue(), other.blue())};
}

Look::Look(const EditorProperties &properties, const QPalette &palette)
{
    const Chosen chosen(properties);
    const QColor base = palette.color(QPalette::Base);
    window = chosen.ground(WindowGround, base, base, marginContrast);
    dark = isDark(window);
    const QColor ink = readable(palette.color(QPalette::Text), window);
    for (int token = 0; token < tokenCount; ++token)
        tokens[size_t(token)] = tokenLook(chosen, properties, Token(token), ink, window);
    const QColor shaded = mixed(window, ink, 6);
    margin = chosen.ground(LeftMarginGround, shaded, window, marginContrast);
    TokenLook &numbers = tokens[size_t(Token::LineNumber)];
    numbers.ground = chosen.ground(LineNumberGround, shaded, window, marginContrast);
    numbers.ink = chosen.ink(LineNumberInk, mixed(numbers.ground, ink, 55), numbers.ground);
    // White on dark would shout louder than the text.
    if (isDark(numbers.ground) && !chosen.isOwn(LineNumberInk))
        numbers.ink = readable(mixed(numbers.ground, numbers.ink, 55), numbers.ground);
    marginInk = readable(mixed(margin, ink, 55), margin);
    const QColor accent = palette.color(QPalette::Highlight);
    bookmarkGround = chosen.ground(BookmarkGround, readable(accent, margin), margin, 21);
    bookmarkInk = chosen.ink(BookmarkInk, bookmarkGround, margin);
    divider = chosen.ground(DividerInk, mixed(window, ink, 20), window, 21);
    verticalDivider = chosen.ground(VerticalDividerInk, mixed(margin, ink, 25), window, 21);
    highlight = chosen.ground(HighlightGround, mixed(window, accent, 30), window, highlightContrast);
    selection = mixed(window, accent, 40);
}

} // namespace control
