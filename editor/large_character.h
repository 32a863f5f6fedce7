// The enlarged view of one character, and the shadow that it casts.
#pragma once

#include <QWidget>

namespace editor {

class LargeCharacter : public QWidget
{
public:
    explicit LargeCharacter(QWidget *parent);

    // index is the character's cell, from 1.
    void showCharacter(int index, const QString &fontFamily);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int index_ = 1;
    QString family_;
};

class LargeShadow : public QWidget
{
public:
    explicit LargeShadow(QWidget *parent);

protected:
    void paintEvent(QPaintEvent *event) override;
};

// Where the enlarged view stands: above its cell, or below when there is no room, and with its shadow wholly
// inside the space. All in the same coordinates.
QRect largePlace(const QRect &cell, const QSize &size, const QRect &space);

// How far the shadow is offset, to the right and down; pixels.
constexpr int shadowOffset = 4;

} // namespace editor
