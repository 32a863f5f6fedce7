#include "app/status_bar.h"

#include "app/fitted_line.h"

#include <QPainter>
#include <QStyle>

namespace app {

namespace {

constexpr int leastLetters = 12; // of either line, in a window however narrow
constexpr int lettersOfFolders = 20; // in a note, as far as there is room
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

void ElidedLabel::setWanted(int width)
{
    wanted_ = width;
    updateGeometry();
}

QSize ElidedLabel::sizeHint() const
{
    const int whole = fontMetrics().horizontalAdvance(text()) + 1; // which is rounded
    return {(wanted_ > 0 ? std::min(wanted_, whole) : whole) + 2 * inset, fontMetrics().height()};
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
    const QString shown = fittedLine(text(), fontMetrics(), area.width());
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
    addPermanentWidget(note_); // has its room before the title line, which stands in the window's title too
    note_->hide();
    addRecording();
    activity_ = addPanel("Activity", tr("What the editor is doing"));
    caret_ = addPanel("CaretPlace", tr("Line and column of the caret"));
    addEncoding();
    lineEnd_ = addPanel("LineEnd", tr("What ends a line"));
}

QLabel *StatusBar::addPanel(const char *name, const QString &tip)
{
    auto *panel = new QLabel(this);
    panel->setObjectName(QString::fromLatin1(name));
    panel->setTextFormat(Qt::PlainText);
    panel->setToolTip(tip);
    panel->setContentsMargins(2 * inset, 0, 2 * inset, 0);
    addPermanentWidget(panel);
    panel->hide();
    return panel;
}

void StatusBar::addRecording()
{
    recording_ = addPanel("Recording", tr("A macro is being recorded"));
    QPalette red = recording_->palette();
    red.setColor(QPalette::WindowText, QColor(0xE0, 0x1B, 0x24)); // on light and on dark
    recording_->setPalette(red);
    recording_->setText(QStringLiteral("\u25CF"));
}

void StatusBar::addEncoding()
{
    encoding_ = new QToolButton(this);
    encoding_->setObjectName(QStringLiteral("Encoding"));
    encoding_->setAutoRaise(true);
    encoding_->setFocusPolicy(Qt::TabFocus);
    encoding_->setToolTip(tr("How characters are written in the file; click for another encoding"));
    addPermanentWidget(encoding_);
    encoding_->hide();
}

void StatusBar::show(QLabel *panel, const QString &text)
{
    panel->setText(text);
    panel->setVisible(!text.isEmpty());
}

void StatusBar::setForm(const QString &encoding, const QString &lineEnd)
{
    encoding_->setText(encoding);
    encoding_->setAccessibleName(tr("Encoding: %1").arg(encoding));
    encoding_->setVisible(!encoding.isEmpty());
    show(lineEnd_, lineEnd);
}

void StatusBar::setNote(const QString &text)
{
    passing_ = text;
    showNote();
}

void StatusBar::setFileNote(const QString &text)
{
    ofFile_ = text;
    if (!text.isEmpty())
        passing_.clear();
    showNote();
}

void StatusBar::showNote()
{
    const QString &text = passing_.isEmpty() ? ofFile_ : passing_;
    note_->setWhole(text);
    const QFontMetrics metrics = note_->fontMetrics();
    note_->setWanted(widthOfWords(text, metrics) + lettersOfFolders * metrics.averageCharWidth());
    note_->setVisible(!text.isEmpty());
}

} // namespace app
