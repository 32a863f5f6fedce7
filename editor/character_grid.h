// The map itself: 32 by 7 cells, one of them current, moved by mouse and keys.
#pragma once

#include "editor/character_moves.h"

#include <QWidget>

class QPainter;

namespace editor {

class CharacterGrid : public QWidget
{
    Q_OBJECT

public:
    explicit CharacterGrid(QWidget *parent = nullptr);

    // The current cell, from 1.
    int current() const { return current_; }
    void setCurrent(int index);

    QString fontFamily() const { return family_; }
    void setFontFamily(const QString &family);

    // Whole pixels; what is left over stays empty at the right and below.
    QSize cellSize() const;
    QRect cellRect(int index) const;
    // The cell at a place, or the nearest one when it lies outside.
    int indexAt(const QPoint &position) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void currentChanged(int index);
    // The user takes the current character.
    void picked(QChar character);
    // The current character is to be shown large, or no longer.
    void enlargeRequested(bool wanted);

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void inputMethodEvent(QInputMethodEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void drawCell(QPainter &painter, int index) const;
    void drawLines(QPainter &painter) const;
    void drawFocus(QPainter &painter) const;
    void move(GridMove move, bool ctrl);
    void typeCharacter(QChar typed);
    void pickCurrent();
    void hold(const QPoint &position);
    void release();
    void tellAssistance();

    int current_ = 1;
    bool held_ = false; // the mouse button is down
    QString family_;
};

// What a character looks like in the map; control characters look like nothing.
QString shownCharacter(int index);

// A font in which any character fits into a cell of that size.
QFont cellFont(const QString &family, const QSize &cell);

// The same rectangle with its edges on whole pixels of the screen.
QRectF onScreenPixels(const QRectF &rect, qreal pixelRatio);

} // namespace editor
