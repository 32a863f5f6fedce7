// The status bar: the title line, and at the right end a note of what was not done, and why.
#pragma once

#include <QLabel>
#include <QStatusBar>

namespace app {

// A line of text that gives way in a narrow window: cut in the middle, whole in its tool tip.
class ElidedLabel : public QLabel
{
public:
    explicit ElidedLabel(QWidget *parent) : QLabel(parent) { }

    void setWhole(const QString &text);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

class StatusBar : public QStatusBar
{
public:
    explicit StatusBar(QWidget *parent);

    void setTitleLine(const QString &text) { title_->setWhole(text); }

    // Stays until it is replaced; empty clears it.
    void setNote(const QString &text);

private:
    ElidedLabel *title_;
    ElidedLabel *note_;
};

} // namespace app
