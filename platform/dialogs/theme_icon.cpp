#include "platform/dialogs/theme_icon.h"

#include <QFile>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QStandardPaths>
#include <QSvgRenderer>
#include <algorithm>
#include <array>

namespace dialogs {
namespace {

constexpr std::array kSizes = {16, 22, 32, 44, 64};

// The ink that the program's own pictures are drawn with, and what a dark window has in its place.
constexpr char kInk[] = "#232629";
constexpr char kInkOnDark[] = "#fcfcfc";

// A theme that lacks one of these would leave the tool bars a patchwork.
constexpr std::array kNeeded
    = {"document-new", "format-text-code", "view-list-tree", "go-down-search", "format-indent-more"};

bool isDark() { return QGuiApplication::palette().color(QPalette::Window).lightness() < 128; }

bool themeIsComplete()
{
    return std::all_of(kNeeded.begin(), kNeeded.end(),
                       [](const char *name) { return QIcon::hasThemeIcon(QLatin1String(name)); });
}

// Not every desktop tells where icon themes are kept.
void searchUsualFolders()
{
    QStringList folders = QIcon::themeSearchPaths();
    folders += QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("icons"),
                                         QStandardPaths::LocateDirectory);
    folders.removeDuplicates();
    QIcon::setThemeSearchPaths(folders);
}

// In the variant that fits the palette, which may have changed since.
void useBreeze()
{
    const QString variant = isDark() ? QStringLiteral("breeze-dark") : QStringLiteral("breeze");
    if (QIcon::themeName() == variant)
        return;
    searchUsualFolders();
    QIcon::setThemeName(variant);
}

// Pictures on the 22 grid keep a margin of 3. At 16 it is left away, which makes grid and pixels one.
QRectF visibleBox(const QSvgRenderer &renderer, int size)
{
    const QRectF box = renderer.viewBoxF();
    return size == 16 && box.width() == 22 ? box.adjusted(3, 3, -3, -3) : box;
}

QPixmap drawn(QSvgRenderer &renderer, int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    const QRectF whole = renderer.viewBoxF();
    renderer.setViewBox(visibleBox(renderer, size));
    QPainter painter(&pixmap);
    renderer.render(&painter);
    renderer.setViewBox(whole);
    return pixmap;
}

// Of the program's own names, and where a theme lacks one, of the theme's: those have a folder to themselves.
QString drawingOf(const QString &name)
{
    const QString own = iconPath(name);
    return QFile::exists(own) ? own : iconPath(QStringLiteral("fallback/") + name);
}

QIcon drawnIcon(const QString &name)
{
    QFile file(drawingOf(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QByteArray svg = file.readAll();
    if (isDark())
        svg.replace(kInk, kInkOnDark);
    QSvgRenderer renderer(svg);
    QIcon icon;
    for (const int size : kSizes)
        icon.addPixmap(drawn(renderer, size));
    return icon;
}

// From the desktop's theme or from Breeze; from neither where they are a patchwork.
bool themeHas(const QString &name)
{
    if (!themeIsComplete() || QIcon::themeName().startsWith(QStringLiteral("breeze")))
        useBreeze();
    return themeIsComplete() && QIcon::hasThemeIcon(name);
}

} // namespace

QIcon themeIcon(const QString &name)
{
    const bool own = name.startsWith(QStringLiteral("xe-"));
    return !own && themeHas(name) ? QIcon::fromTheme(name) : drawnIcon(name);
}

QString iconPath(const QString &name) { return QStringLiteral(":/icons/%1.svg").arg(name); }

} // namespace dialogs
