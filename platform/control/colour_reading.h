// Which colours are really shown for the ones a user chose or left as they were: always such that the text
// can be read in the palette at hand.
#pragma once

#include "platform/control/editor_properties.h"

#include <QColor>
#include <array>
#include <span>

class QPalette;

namespace control {

// What a piece of text is, to the eye.
enum class Token
{
    Text,
    Number,
    Keyword,
    Operator,
    Scope,
    Comment,
    String,
    TagText,
    Entity,
    TagName,
    Attribute,
    LineNumber
};
inline constexpr int tokenCount = int(Token::LineNumber) + 1;

struct TokenRow
{
    ColourSlot ink;
    ColourSlot ground;
    StyleSlot style;
};

// By token.
std::span<const TokenRow, tokenCount> tokenTable();

struct TokenLook
{
    QColor ink;
    QColor ground;
    bool bold = false;
    bool italic = false;
};

// The colours shown. A colour that the user chose is shown as it is; one that was never chosen, or that
// follows the palette, gives way where it could not be read.
struct Look
{
    Look(const EditorProperties &properties, const QPalette &palette);

    const TokenLook &token(Token token) const { return tokens[size_t(token)]; }

    bool dark = false; // what the text stands on
    QColor window;
    std::array<TokenLook, tokenCount> tokens;
    QColor margin;
    QColor marginInk; // of folds and other signs in the margin
    QColor bookmarkInk;
    QColor bookmarkGround;
    QColor divider;
    QColor verticalDivider;
    QColor highlight;
    QColor selection;
};

// The contrast of two colours, 1 for equal ones to 21 for black on white.
double contrast(const QColor &one, const QColor &other);

// So much of the other colour in the ground, in percent.
QColor mixed(const QColor &ground, const QColor &other, int percent);

} // namespace control
