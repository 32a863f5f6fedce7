#include "app/node_images.h"

#include "platform/dialogs/theme_icon.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPalette>

namespace app {

namespace {

QPixmap inOneColour(QPixmap picture, const QColor &colour)
{
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), colour);
    return picture;
}

QIcon nodeImage(const QString &name)
{
    const QIcon drawn = dialogs::themeIcon(name);
    const QColor onSelection = QGuiApplication::palette().color(QPalette::HighlightedText);
    QIcon image;
    for (const int side : {16, 22, 24, 32, 48, 64}) {
        const QPixmap picture = drawn.pixmap(QSize(side, side), 1.0);
        image.addPixmap(picture, QIcon::Normal);
        image.addPixmap(inOneColour(picture, onSelection), QIcon::Selected);
    }
    return image;
}

} // namespace

std::array<QIcon, 5> nodeImages()
{
    return {nodeImage(QStringLiteral("xe-element")), nodeImage(QStringLiteral("xe-pi")),
            nodeImage(QStringLiteral("xe-comment")), nodeImage(QStringLiteral("xe-cdata")),
            nodeImage(QStringLiteral("xe-text"))};
}

} // namespace app
