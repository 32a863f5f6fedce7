// The pictures drawn for where no icon theme has them.
#include "platform/dialogs/theme_icon.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPalette>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <memory>

using dialogs::themeIcon;

namespace {

const QColor kLight(0xef, 0xf0, 0xf1);
const QColor kDark(0x2a, 0x2e, 0x32);
const QColor kOfTheme(Qt::magenta);

QStringList fallbackNames()
{
    QStringList names = QDir(QStringLiteral(":/icons/fallback")).entryList({QStringLiteral("*.svg")});
    return names.replaceInStrings(QStringLiteral(".svg"), QString());
}

QImage picture(const QString &name, int size)
{
    return themeIcon(name).pixmap(QSize(size, size), 1.0).toImage().convertToFormat(QImage::Format_ARGB32);
}

double luminance(const QColor &colour)
{
    const auto linear
        = [](double part) { return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4); };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

// From 1 to 21; a picture is told from its ground from 3 on.
double contrast(const QColor &one, const QColor &other)
{
    const double a = luminance(one) + 0.05;
    const double b = luminance(other) + 0.05;
    return a > b ? a / b : b / a;
}

// The parts of a hundred that are drawn at all.
int inked(const QImage &image)
{
    int count = 0;
    for (int i = 0; i < image.width() * image.height(); ++i)
        count += qAlpha(image.pixel(i % image.width(), i / image.width())) > 128 ? 1 : 0;
    return 100 * count / (image.width() * image.height());
}

// Of what is drawn in full the part that stands out least; 0 where nothing is.
double leastContrast(const QImage &image, const QColor &ground)
{
    QSet<QRgb> inks;
    for (int i = 0; i < image.width() * image.height(); ++i) {
        const QRgb pixel = image.pixel(i % image.width(), i / image.width());
        if (qAlpha(pixel) >= 192)
            inks.insert(pixel);
    }
    double least = inks.isEmpty() ? 0 : 21;
    for (const QRgb ink : inks)
        least = std::min(least, contrast(QColor(ink), ground));
    return least;
}

// A theme of pictures in one colour.
void makeTheme(const QDir &folder, const QString &theme, const QStringList &names)
{
    QVERIFY(folder.mkpath(theme + QStringLiteral("/16")));
    QFile index(folder.filePath(theme + QStringLiteral("/index.theme")));
    QVERIFY(index.open(QIODevice::WriteOnly));
    index.write("[Icon Theme]\nName=made\nDirectories=16\n[16]\nSize=16\nType=Fixed\n");
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(kOfTheme);
    for (const QString &name : names)
        QVERIFY(image.save(folder.filePath(QStringLiteral("%1/16/%2.png").arg(theme, name))));
}

bool isOfTheme(const QString &name) { return picture(name, 16).pixelColor(8, 8) == kOfTheme; }

} // namespace

class TestThemeIcon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void fallbacksAreSeen_data();
    void fallbacksAreSeen();
    void fallbacksDiffer();
    void themesComeFirst_data();
    void themesComeFirst();
    void paletteIsFollowed();

private:
    std::unique_ptr<QTemporaryDir> folder_;
};

// No theme is found but those a test makes.
void TestThemeIcon::init()
{
    folder_ = std::make_unique<QTemporaryDir>();
    for (const char *variable : {"XDG_DATA_DIRS", "XDG_DATA_HOME"})
        qputenv(variable, QFile::encodeName(folder_->path()));
    QIcon::setThemeSearchPaths({folder_->path()});
    QIcon::setThemeName(QStringLiteral("none"));
    QApplication::setPalette(QPalette(kLight));
}

void TestThemeIcon::fallbacksAreSeen_data()
{
    QTest::addColumn<QColor>("window");
    QTest::newRow("light") << kLight;
    QTest::newRow("dark") << kDark;
}

void TestThemeIcon::fallbacksAreSeen()
{
    QFETCH(QColor, window);
    QApplication::setPalette(QPalette(window));
    const QStringList names = fallbackNames();
    QVERIFY(names.size() > 40);
    for (const QString &name : names) {
        for (const int size : {16, 22, 32, 44, 64}) {
            const QImage image = picture(name, size);
            const QString what = QStringLiteral("%1 at %2: %3 %4")
                                     .arg(name)
                                     .arg(image.width())
                                     .arg(inked(image))
                                     .arg(leastContrast(image, window));
            QVERIFY2(image.width() == size && inked(image) >= 4, qPrintable(what));
            QVERIFY2(leastContrast(image, window) >= 3, qPrintable(what));
        }
    }
}

void TestThemeIcon::fallbacksDiffer()
{
    QSet<QByteArray> seen;
    for (const QString &name : fallbackNames()) {
        const QImage image = picture(name, 16);
        const QByteArray bits(reinterpret_cast<const char *>(image.constBits()), image.sizeInBytes());
        QVERIFY2(!seen.contains(bits), qPrintable(name));
        seen.insert(bits);
    }
}

void TestThemeIcon::themesComeFirst_data()
{
    QTest::addColumn<QString>("theme"); // that stands there; the desktop has chosen "desktop"
    QTest::addColumn<bool>("complete");
    QTest::addColumn<bool>("used");
    QTest::newRow("complete") << "desktop" << true << true;
    QTest::newRow("patchwork") << "desktop" << false << false;
    QTest::newRow("breeze") << "breeze" << true << true;
    QTest::newRow("patchwork of breeze") << "breeze" << false << false;
}

void TestThemeIcon::themesComeFirst()
{
    QFETCH(QString, theme);
    QFETCH(bool, complete);
    const QStringList names{QStringLiteral("document-new"), QStringLiteral("format-text-code"),
                            QStringLiteral("view-list-tree"), QStringLiteral("go-down-search"),
                            QStringLiteral("format-indent-more")};
    makeTheme(QDir(folder_->path()), theme, complete ? names : names.mid(0, 4));
    QIcon::setThemeName(QStringLiteral("desktop"));
    QTEST(isOfTheme(QStringLiteral("document-new")), "used");
    // The theme lacks it; that of a shorter name is not it.
    QVERIFY(themeIcon(QStringLiteral("document-new-from-here")).isNull());
    QVERIFY(!isOfTheme(QStringLiteral("edit-cut")) && inked(picture(QStringLiteral("edit-cut"), 16)) > 0);
}

// Breeze in the light, and its dark variant nowhere: then those drawn here, in light ink.
void TestThemeIcon::paletteIsFollowed()
{
    const QString name = QStringLiteral("format-indent-more");
    makeTheme(QDir(folder_->path()), QStringLiteral("breeze"),
              {QStringLiteral("document-new"), QStringLiteral("format-text-code"),
               QStringLiteral("view-list-tree"), QStringLiteral("go-down-search"), name});
    QVERIFY(isOfTheme(name));
    QApplication::setPalette(QPalette(kDark));
    QVERIFY(!isOfTheme(name) && leastContrast(picture(name, 16), kDark) >= 3);
    QApplication::setPalette(QPalette(kLight));
    QVERIFY(isOfTheme(name));
}

QTEST_MAIN(TestThemeIcon)
#include "test_theme_icon.moc"
