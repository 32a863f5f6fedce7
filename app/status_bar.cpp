#include "app/status_bar.h"

#include <QPainter>
#include <QStyle>

namespace app {

namespace {

constexpr int leastLetters = 12; // of either line, in a window however narrow
constexpr int inset = 4; // pixels at either end

} // namespace

void ElidedLabel::setWhole(const QString &text)
{
    setTextFormat(Qt::PlainText);
    setText(text);
    setToolTip(text.isEmpty()
                   ? text
                   : QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(text.toHtmlEscaped()));
    updateGeometry();
}

QSize ElidedLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()) + 2 * inset, fontMetrics().height()};
}

QSize ElidedLabel::minimumSizeHint() const
{
    const int least = fontMetrics().averageCharWidth() * leastLetters;
    return {std::min(least, sizeHint().width()), fontMetrics().height()};
}

void ElidedLabel::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect area = contentsRect().adjusted(inset, 0, -inset, 0);
    QString line = text();
    line.replace(QLatin1Char('\n'), QLatin1Char(' ')); // a file name may hold one
    const QString shown = fontMetrics().elidedText(line, Qt::ElideMiddle, area.width());
    style()->drawItemText(&painter, area, int(Qt::AlignVCenter | Qt::AlignLeft), palette(), isEnabled(),
                          shown, foregroundRole());
}

StatusBar::StatusBar(QWidget *parent)
    : QStatusBar(parent), title_(new ElidedLabel(this)), note_(new ElidedLabel(this))
{
    setObjectName(QStringLiteral("StatusBar1"));
    title_->setObjectName(QStringLiteral("Panel1"));
    note_->setObjectName(QStringLiteral("Note"));
    addWidget(title_, 1);
    addPermanentWidget(note_, 1);
    note_->hide();
}

void StatusBar::setNote(const QString &text)
{
    note_->setWhole(text);
    note_->setVisible(!text.isEmpty());
}

} // namespace app
