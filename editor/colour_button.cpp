#include "editor/colour_button.h"

#include <QColorDialog>
#include <QPainter>

namespace editor {

namespace {

constexpr double swatchWidth = 1.6; // heights
constexpr double inkSize = 0.7; // heights
constexpr int widest = 13; // characters, so that the button does not jump between colours

QColor colourOf(qint32 colour) { return {colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF}; }

} // namespace

qint32 editorColour(const QColor &colour)
{
    return colour.red() | (colour.green() << 8) | (colour.blue() << 16);
}

QSize swatchSize(const QWidget &on)
{
    const int height = on.fontMetrics().height();
    return {int(height * swatchWidth), height};
}

QIcon colourSwatch(const QWidget &on, const QColor &ground, const QColor &ink)
{
    const QSizeF size = swatchSize(on);
    const double ratio = on.devicePixelRatioF();
    QPixmap picture((size * ratio).toSize());
    picture.setDevicePixelRatio(ratio);
    picture.fill(ground);
    QPainter painter(&picture);
    QRectF field(QPointF(), size);
    if (ink.isValid()) {
        QFont font = on.font();
        font.setPixelSize(int(size.height() * inkSize));
        painter.setFont(font);
        painter.setPen(ink);
        painter.drawText(field, Qt::AlignCenter, QStringLiteral("Ab"));
    }
    painter.setPen(on.palette().color(QPalette::Mid));
    painter.drawRect(field.adjusted(0.5, 0.5, -0.5, -0.5));
    return QIcon(picture);
}

ColourButton::ColourButton(QWidget *parent) : QPushButton(parent)
{
    connect(this, &QPushButton::clicked, this, &ColourButton::choose);
}

void ColourButton::setSubject(const QString &subject)
{
    subject_ = subject;
    setAccessibleName(subject);
}

void ColourButton::showColour(qint32 colour, const QColor &followed)
{
    shown_ = colour < 0 ? followed : colourOf(colour);
    setIconSize(swatchSize(*this));
    setIcon(colourSwatch(*this, shown_));
    setText(colour < 0 ? tr("Desktop") : shown_.name().toUpper());
    setMinimumWidth(iconSize().width() + fontMetrics().averageCharWidth() * widest);
}

void ColourButton::choose()
{
    auto *dialog = new QColorDialog(shown_, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowTitle(subject_);
    connect(dialog, &QColorDialog::colorSelected, this,
            [this](const QColor &colour) { Q_EMIT colourChosen(editorColour(colour)); });
    dialog->open();
}

} // namespace editor
