// The pictures drawn for where no icon theme has them.
#include "platform/dialogs/theme_icon.h"

#include <QtTest>
#include <QtWidgets>

#include <cmath>

using namespace Qt::StringLiterals;
using dialogs::themeIcon;

namespace {

const QColor kLight(0xef, 0xf0, 0xf1);
const QColor kDark(0x2a, 0x2e, 0x32);
const QColor kOfTheme(Qt::magenta);

QStringList drawnNames()
{
    QStringList names
        = QDir(u":/icons/fallback"_s).entryList({u"*.svg"_s}) + QDir(u":/icons"_s).entryList({u"xe-*.svg"_s});
    return names.replaceInStrings(u".svg"_s, QString());
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

QList<QRgb> pixelsOf(const QImage &image)
{
    const auto *first = reinterpret_cast<const QRgb *>(image.constBits());
    return {first, first + image.width() * image.height()};
}

// The parts of a hundred that are drawn at all.
qsizetype inked(const QImage &image)
{
    const QList<QRgb> pixels = pixelsOf(image);
    return 100 * std::count_if(pixels.begin(), pixels.end(), [](QRgb pixel) { return qAlpha(pixel) > 128; })
        / std::max<qsizetype>(pixels.size(), 1);
}

// Of what is drawn in full the parts that stand out least and most; 0 where nothing is.
std::pair<double, double> contrasts(const QImage &image, const QColor &ground)
{
    QList<double> all;
    for (const QRgb pixel : pixelsOf(image)) {
        if (qAlpha(pixel) >= 192)
            all.append(contrast(QColor(pixel), ground));
    }
    const auto [least, most] = std::minmax_element(all.begin(), all.end());
    return all.isEmpty() ? std::pair(0.0, 0.0) : std::pair(*least, *most);
}

// The pictures that a theme must have to be taken for whole.
const QStringList whole{u"document-new"_s, u"format-text-code"_s, u"view-list-tree"_s, u"go-down-search"_s,
                        u"format-indent-more"_s};

// A theme of pictures in one colour.
void makeTheme(const QDir &folder, const QString &theme, const QStringList &names)
{
    QVERIFY(folder.mkpath(theme + u"/16"_s));
    QFile index(folder.filePath(theme + u"/index.theme"_s));
    QVERIFY(index.open(QIODevice::WriteOnly));
    index.write("[Icon Theme]\nName=made\nDirectories=16\n[16]\nSize=16\nType=Fixed\n");
    QImage image(16, 16, QImage::Format_ARGB32);
    image.fill(kOfTheme);
    for (const QString &name : names)
        QVERIFY(image.save(folder.filePath(u"%1/16/%2.png"_s.arg(theme, name))));
}

bool isOfTheme(const QString &name) { return picture(name, 16).pixelColor(8, 8) == kOfTheme; }

} // namespace

class TestThemeIcon : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // No theme is found but those a test makes.
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        for (const char *variable : {"XDG_DATA_DIRS", "XDG_DATA_HOME"})
            qputenv(variable, QFile::encodeName(folder_->path()));
        QIcon::setThemeSearchPaths({folder_->path()});
        QIcon::setThemeName(u"none"_s);
        QApplication::setPalette(QPalette(kLight));
    }

    void drawnOnesAreSeenAndDiffer()
    {
        const QStringList names = drawnNames();
        QVERIFY(names.size() > 56);
        for (const QColor &window : {kLight, kDark}) {
            QApplication::setPalette(QPalette(window));
            QHash<QList<QRgb>, QString> seen;
            for (const QString &name : names) {
                for (const int size : {16, 22, 32, 44, 64}) {
                    const QImage image = picture(name, size);
                    const QString what = u"%1 at %2"_s.arg(name).arg(size);
                    QVERIFY2(image.width() == size && inked(image) >= 4, qPrintable(what));
                    // Those of several colours have parts that are only a tint.
                    const auto [least, most] = contrasts(image, window);
                    QVERIFY2(least >= 3 || (name.startsWith(u"xe-") && most >= 2),
                             qPrintable(what + u" %1 %2"_s.arg(least).arg(most)));
                }
                QString &other = seen[pixelsOf(picture(name, 16))];
                QVERIFY2(other.isEmpty(), qPrintable(name + u" looks like "_s + other));
                other = name;
            }
        }
    }

    // The desktop has chosen "desktop". A patchwork lacks what a whole theme has.
    void themesComeFirst()
    {
        for (const QString &theme : {u"desktop"_s, u"breeze"_s}) {
            for (const bool complete : {true, false}) {
                init();
                makeTheme(QDir(folder_->path()), theme, whole.first(complete ? 5 : 4));
                QIcon::setThemeName(u"desktop"_s);
                QCOMPARE(isOfTheme(whole[0]), complete);
                // The theme lacks it; that of a shorter name is not it.
                QVERIFY(themeIcon(u"document-new-from-here"_s).isNull());
                QVERIFY(!isOfTheme(u"edit-cut"_s) && inked(picture(u"edit-cut"_s, 16)) > 0);
            }
        }
    }

    // Breeze in the light, and its dark variant nowhere: then those drawn here, in light ink.
    void paletteIsFollowed()
    {
        makeTheme(QDir(folder_->path()), u"breeze"_s, whole);
        QVERIFY(isOfTheme(whole[4]));
        QApplication::setPalette(QPalette(kDark));
        QVERIFY(!isOfTheme(whole[4]) && contrasts(picture(whole[4], 16), kDark).first >= 3);
        QApplication::setPalette(QPalette(kLight));
        QVERIFY(isOfTheme(whole[4]));
    }

private:
    std::unique_ptr<QTemporaryDir> folder_;
};

QTEST_MAIN(TestThemeIcon)
#include "test_theme_icon.moc"
