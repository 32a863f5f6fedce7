#include "editor/character_grid.h"

#include "editor/character_grid_accessible.h"

#include <QApplication>
#include <QFontInfo>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

namespace editor {

namespace {

// Pixels.
constexpr QSize usualCell(23, 28);
constexpr QSize smallestCell(14, 17);
constexpr QSize spare(3, 3);
constexpr int focusInset = 2;

QSize gridSize(const QSize &cell) { return {cell.width() * characterColumns, cell.height() * characterRows}; }

struct KeyMove
{
    int key;
    GridMove move;
};

constexpr KeyMove keyMoves[] = {
    {Qt::Key_PageUp, GridMove::PageUp}, {Qt::Key_PageDown, GridMove::PageDown}, {Qt::Key_Up, GridMove::Up},
    {Qt::Key_Down, GridMove::Down},     {Qt::Key_Home, GridMove::Home},         {Qt::Key_End, GridMove::End},
    {Qt::Key_Left, GridMove::Left},     {Qt::Key_Right, GridMove::Right},
};

// Not a command: on some keyboards Ctrl and Alt together are what types the third character of a key.
bool types(const QKeyEvent &event)
{
    const Qt::KeyboardModifiers held
        = event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool plain = held == Qt::NoModifier || held == (Qt::ControlModifier | Qt::AltModifier);
    return plain && !event.text().isEmpty() && event.text().front().category() != QChar::Other_Control;
}

// Between text and ground, so that it shows on dark ones too.
QColor lineColour(const QPalette &palette)
{
    constexpr int textParts = 3; // of 10
    const QColor text = palette.color(QPalette::Text);
    const QColor ground = palette.color(QPalette::Base);
    const auto mixed = [](int some, int rest) { return (some * textParts + rest * (10 - textParts)) / 10; };
    return {mixed(text.red(), ground.red()), mixed(text.green(), ground.green()),
            mixed(text.blue(), ground.blue())};
}

bool takes(int key) { return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Insert; }

} // namespace

QString shownCharacter(int index)
{
    constexpr char16_t softHyphen = 0xad; // which text drawing would leave out
    if (isControl(index))
        return {};
    return character(index) == softHyphen ? QStringLiteral("-") : QString(character(index));
}

QFont cellFont(const QString &family, const QSize &cell)
{
    QFont font(family);
    font.setPixelSize(std::max(1, std::min(cell.width() * 3 / 4, cell.height() * 3 / 5)));
    return font;
}

QRectF onScreenPixels(const QRectF &rect, qreal pixelRatio)
{
    const auto snapped = [pixelRatio](qreal place) { return std::round(place * pixelRatio) / pixelRatio; };
    return {QPointF(snapped(rect.left()), snapped(rect.top())),
            QPointF(snapped(rect.left() + rect.width()), snapped(rect.top() + rect.height()))};
}

CharacterGrid::CharacterGrid(QWidget *parent) : QWidget(parent), family_(QFontInfo(font()).family())
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_InputMethodEnabled);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    describeGridsToAssistance();
}

void CharacterGrid::setCurrent(int index)
{
    if (index == current_ || index < 1 || index > characterCount)
        return;
    current_ = index;
    update();
    tellAssistance();
    Q_EMIT currentChanged(index);
}

void CharacterGrid::setFontFamily(const QString &family)
{
    family_ = family;
    update();
}

QSize CharacterGrid::cellSize() const
{
    return {std::max(1, width() / characterColumns), std::max(1, height() / characterRows)};
}

QRect CharacterGrid::cellRect(int index) const
{
    const QSize cell = cellSize();
    const int column = (index - 1) % characterColumns;
    const int row = (index - 1) / characterColumns;
    return {QPoint(column * cell.width(), row * cell.height()), cell};
}

int CharacterGrid::indexAt(const QPoint &position) const
{
    const QSize cell = cellSize();
    const int column = std::clamp(position.x() / cell.width(), 0, characterColumns - 1);
    const int row = std::clamp(position.y() / cell.height(), 0, characterRows - 1);
    return characterColumns * row + column + 1;
}

// With some pixels to spare: one that a scale factor rounds away would cost every cell one.
QSize CharacterGrid::sizeHint() const { return gridSize(usualCell) + spare; }
QSize CharacterGrid::minimumSizeHint() const { return gridSize(smallestCell); }

void CharacterGrid::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRectF area(QPoint(0, 0), gridSize(cellSize()));
    painter.fillRect(onScreenPixels(area, devicePixelRatioF()), palette().brush(QPalette::Base));
    painter.setFont(cellFont(family_, cellSize()));
    for (int index = 1; index <= characterCount; ++index)
        drawCell(painter, index);
    drawLines(painter);
    if (hasFocus())
        drawFocus(painter);
}

void CharacterGrid::drawCell(QPainter &painter, int index) const
{
    const QRectF cell = onScreenPixels(cellRect(index), devicePixelRatioF());
    const bool marked = index == current_;
    if (marked)
        painter.fillRect(cell, palette().brush(QPalette::Highlight));
    painter.setPen(palette().color(marked ? QPalette::HighlightedText : QPalette::Text));
    painter.drawText(cell, Qt::AlignCenter, shownCharacter(index));
}

// Filled rectangles instead of pens: they cover whole pixels at any scale.
void CharacterGrid::drawLines(QPainter &painter) const
{
    const QSize cell = cellSize();
    const QSize area = gridSize(cell);
    const qreal ratio = devicePixelRatioF();
    const qreal thickness = std::max(1.0, std::floor(ratio)) / ratio;
    const QColor colour = lineColour(palette());
    const auto place = [&](int edge) { return std::max(0.0, std::round(edge * ratio) / ratio - thickness); };
    for (int column = 0; column <= characterColumns; ++column)
        painter.fillRect(QRectF(place(column * cell.width()), 0, thickness, area.height()), colour);
    for (int row = 0; row <= characterRows; ++row)
        painter.fillRect(QRectF(0, place(row * cell.height()), area.width(), thickness), colour);
}

void CharacterGrid::drawFocus(QPainter &painter) const
{
    const QRect inner = cellRect(current_).adjusted(focusInset, focusInset, -focusInset - 1, -focusInset - 1);
    const QRectF frame = onScreenPixels(inner, devicePixelRatioF());
    QPen pen(palette().color(QPalette::HighlightedText), 1, Qt::DotLine);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(frame);
}

void CharacterGrid::keyPressEvent(QKeyEvent *event)
{
    const auto known = std::find_if(std::begin(keyMoves), std::end(keyMoves),
                                    [event](const KeyMove &row) { return row.key == event->key(); });
    if (known != std::end(keyMoves))
        move(known->move, event->modifiers() & Qt::ControlModifier);
    else if (takes(event->key()))
        pickCurrent();
    else if (types(*event))
        typeCharacter(event->text().front());
    else
        QWidget::keyPressEvent(event);
}

void CharacterGrid::inputMethodEvent(QInputMethodEvent *event)
{
    const QString typed = event->commitString();
    for (const QChar character : typed)
        typeCharacter(character);
    event->accept();
}

void CharacterGrid::move(GridMove move, bool ctrl)
{
    const std::optional<int> to = moved(current_, move, ctrl);
    if (!to) {
        QApplication::beep();
        return;
    }
    setCurrent(*to);
    Q_EMIT enlargeRequested(true);
}

void CharacterGrid::typeCharacter(QChar typed)
{
    const int index = indexOfCharacter(typed);
    if (index == 0) {
        Q_EMIT enlargeRequested(false);
        QApplication::beep();
        return;
    }
    setCurrent(index);
    Q_EMIT enlargeRequested(true);
    pickCurrent();
}

void CharacterGrid::pickCurrent() { Q_EMIT picked(character(current_)); }

void CharacterGrid::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        hold(event->position().toPoint());
}

void CharacterGrid::mouseMoveEvent(QMouseEvent *event)
{
    if (held_)
        hold(event->position().toPoint());
}

void CharacterGrid::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        release();
}

void CharacterGrid::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    hold(event->position().toPoint());
    pickCurrent();
}

void CharacterGrid::hold(const QPoint &position)
{
    held_ = true;
    setCursor(Qt::BlankCursor);
    setCurrent(indexAt(position));
    Q_EMIT enlargeRequested(true);
}

void CharacterGrid::release()
{
    held_ = false;
    unsetCursor();
    Q_EMIT enlargeRequested(false);
}

void CharacterGrid::focusInEvent(QFocusEvent *event)
{
    QWidget::focusInEvent(event);
    update();
    tellAssistance();
}

void CharacterGrid::focusOutEvent(QFocusEvent *event)
{
    QWidget::focusOutEvent(event);
    release();
    update();
}

void CharacterGrid::tellAssistance()
{
    if (hasFocus())
        announceCell(*this, current_);
}

} // namespace editor
