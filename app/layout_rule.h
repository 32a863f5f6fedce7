// How the main window divides its area: sizes that follow from the window's, step by step. Lengths go in
// and come out in pixels; the rule itself is stated in twips, a length that does not depend on the screen.
#pragma once

#include <QRect>
#include <QSize>
#include <optional>

namespace app::layout_rule {

inline constexpr int twipsPerPixel = 15; // at 96 dots an inch, Qt's device-independent pixel
inline constexpr int containerWidthMargin = 120; // twips; the window's borders
inline constexpr int tabStripWidthMargin = 35; // twips
inline constexpr int tabStripHeightMargin = 120; // twips
inline constexpr int viewWidthMargin = 35; // twips
inline constexpr int viewHeightMargin = 700; // twips; the tabs and the toolbars above a view

// What the window offers. The width counts its borders, the height does not: the rule wants it so.
struct WindowMeasure
{
    int outerWidth = 0;
    int innerHeight = 0;
    int statusBarHeight = 0;
    int toolbarHeight = 0;
};

// Each answers nothing when a length would be negative; that control then keeps the size it has.
std::optional<QSize> containerSize(const WindowMeasure &window);
std::optional<QSize> tabStripSize(QSize container);
std::optional<QSize> viewSize(QSize tabStrip);

// The progress bar over the editor, in the editor's coordinates: centred by the size it had, then made
// half the editor's width.
std::optional<QRect> progressBarPlace(QSize editor, QSize bar);

} // namespace app::layout_rule
