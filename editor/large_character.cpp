#include "editor/large_character.h"

#include "editor/character_grid.h"

#include <QPainter>
#include <algorithm>

namespace editor {

namespace {

constexpr int gap = 2; // pixels between the cell and its enlarged view

// The mouse stays with the grid, and assistive technology too.
void makeMerePicture(QWidget &widget)
{
    widget.setAttribute(Qt::WA_TransparentForMouseEvents);
    widget.setFocusPolicy(Qt::NoFocus);
    widget.hide();
}

} // namespace

LargeCharacter::LargeCharacter(QWidget *parent) : QWidget(parent) { makeMerePicture(*this); }

void LargeCharacter::showCharacter(int index, const QString &fontFamily)
{
    index_ = index;
    family_ = fontFamily;
    update();
}

void LargeCharacter::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const qreal ratio = devicePixelRatioF();
    const qreal edge = std::max(1.0, std::floor(ratio)) / ratio;
    painter.fillRect(rect(), palette().brush(QPalette::Text));
    painter.fillRect(QRectF(rect()).adjusted(edge, edge, -edge, -edge), palette().brush(QPalette::Base));
    painter.setPen(palette().color(QPalette::Text));
    painter.setFont(cellFont(family_, size()));
    painter.drawText(QRectF(rect()), Qt::AlignCenter, shownCharacter(index_));
}

LargeShadow::LargeShadow(QWidget *parent) : QWidget(parent) { makeMerePicture(*this); }

void LargeShadow::paintEvent(QPaintEvent *)
{
    constexpr int shade = 110; // of 255
    QPainter(this).fillRect(rect(), QColor(0, 0, 0, shade));
}

QRect largePlace(const QRect &cell, const QSize &size, const QRect &space)
{
    const int above = cell.top() - gap - size.height();
    const int below = cell.top() + cell.height() + gap;
    const int left = cell.left() + (cell.width() - size.width()) / 2;
    const int lastLeft = space.left() + space.width() - size.width() - shadowOffset;
    const int lastTop = space.top() + space.height() - size.height() - shadowOffset;
    const int top = above >= space.top() ? above : below;
    return {QPoint(std::max(space.left(), std::min(left, lastLeft)),
                   std::max(space.top(), std::min(top, lastTop))),
            size};
}

} // namespace editor
