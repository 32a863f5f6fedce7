// The dialogs that people see, as far as a machine can answer them, and the pictures.
#include "platform/dialogs/file_filter.h"
#include "platform/dialogs/message_text.h"
#include "platform/dialogs/qt_dialogs.h"
#include "platform/dialogs/theme_icon.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QScreen>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using namespace dialogs;

class TestQtDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void filters_data();
    void filters();
    void endings_data();
    void endings();
    void texts_data();
    void texts();
    void messageBoxes_data();
    void messageBoxes();
    void longReportsFitTheScreen();
    void openingAMissingFileIsAllowed();
    void savingAsksNothing();
    void ownPicturesFollowThePalette();
    void everyPictureDraws();

private:
    // Lets act see the next modal window of that kind once it is there.
    template <typename Window>
    void whenShown(std::function<void(Window &)> act)
    {
        QTimer::singleShot(0, this, [this, act] {
            if (auto *window = qobject_cast<Window *>(QApplication::activeModalWidget()))
                act(*window);
            else
                whenShown<Window>(act);
        });
    }
};

// The desktop's own file dialog could not be operated from here.
void TestQtDialogs::initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

void TestQtDialogs::filters_data()
{
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("expected");
    QTest::newRow("open")
        << u"XML Documents (*.xml)|*.xml|XSLT Stylesheets (*.xsl;*.xslt;*.fo)|*.xsl;*.xslt;*.fo|"
           "All files (*.*)|*.*"_qs
        << QStringList{u"XML Documents (*.xml)"_qs, u"XSLT Stylesheets (*.xsl *.xslt *.fo)"_qs,
                       u"All files (*)"_qs};
    QTest::newRow("other brackets") << u"Files (old)|*.a; *.b"_qs << QStringList{u"Files (old) (*.a *.b)"_qs};
    QTest::newRow("no patterns") << u"Name||Other|*.o|Odd"_qs << QStringList{u"Other (*.o)"_qs};
    QTest::newRow("nothing") << QString() << QStringList();
}

void TestQtDialogs::filters()
{
    QFETCH(QString, filter);
    QTEST(nameFilters(filter), "expected");
}

void TestQtDialogs::endings_data()
{
    QTest::addColumn<QString>("nameFilter");
    QTest::addColumn<QString>("expected");
    QTest::newRow("one") << u"XML Documents (*.xml)"_qs << u"xml"_qs;
    QTest::newRow("several") << u"XSLT (*.xsl *.xslt)"_qs << u"xsl"_qs;
    QTest::newRow("all") << u"All files (*)"_qs << QString();
}

void TestQtDialogs::endings()
{
    QFETCH(QString, nameFilter);
    QTEST(defaultEnding(nameFilter), "expected");
}

void TestQtDialogs::texts_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("ordinary") << u"Error!\r\n\r\nLine              :  2\r\n"_qs
                              << u"Error!\n\nLine              :  2\n"_qs;
    QTest::newRow("run") << QString(51, u'x') << QString(50, u'x') + QChar(0x200B) + u'x';
    QTest::newRow("pairs") << QString(49, u'x') + u"\U0001F600"_qs + u'y'
                           << QString(49, u'x') + u"\U0001F600"_qs + QChar(0x200B) + u'y';
    QTest::newRow("long line") << QString(u"ab "_qs).repeated(201)
                               << QString(u"ab "_qs).repeated(200) + QChar(0x2026);
    QTest::newRow("many lines") << QString(30, u'\n') << QString(25, u'\n') + QChar(0x2026);
}

void TestQtDialogs::texts()
{
    QFETCH(QString, text);
    QTEST(fittedText(text), "expected");
}

void TestQtDialogs::messageBoxes_data()
{
    QTest::addColumn<Buttons>("buttons");
    QTest::addColumn<int>("key");
    QTest::addColumn<Answer>("answer");
    QTest::newRow("ok, escape") << Buttons::Ok << int(Qt::Key_Escape) << Answer::Ok;
    QTest::newRow("yes no, return") << Buttons::YesNo << int(Qt::Key_Return) << Answer::Yes;
    QTest::newRow("yes no, escape") << Buttons::YesNo << int(Qt::Key_Escape) << Answer::No;
    QTest::newRow("all, return") << Buttons::YesNoCancel << int(Qt::Key_Return) << Answer::Yes;
    QTest::newRow("all, escape") << Buttons::YesNoCancel << int(Qt::Key_Escape) << Answer::Cancel;
}

void TestQtDialogs::messageBoxes()
{
    QFETCH(Buttons, buttons);
    QFETCH(int, key);
    QtDialogs dialogs;
    QString shown;
    Qt::TextFormat format = Qt::AutoText;
    whenShown<QMessageBox>([&](QMessageBox &box) {
        shown = box.text();
        format = box.textFormat();
        QTest::keyClick(&box, Qt::Key(key));
    });
    QTEST(dialogs.message(Icon::Question, buttons, QStringLiteral("<b>a & b</b>")), "answer");
    QCOMPARE(shown, QStringLiteral("<b>a & b</b>"));
    QCOMPARE(format, Qt::PlainText);
}

void TestQtDialogs::longReportsFitTheScreen()
{
    QtDialogs dialogs;
    QSize size;
    whenShown<QMessageBox>([&](QMessageBox &box) {
        size = box.size();
        box.reject();
    });
    dialogs.message(Icon::Exclamation, Buttons::Ok,
                    QStringLiteral("Error!\r\n\r\nSource Text :  ") + QString(100000, u'x'));
    const QSize screen = QApplication::primaryScreen()->availableSize();
    QVERIFY(size.isValid() && size.width() < screen.width() && size.height() < screen.height());
}

void TestQtDialogs::openingAMissingFileIsAllowed()
{
    QTemporaryDir folder;
    const QString missing = QDir::toNativeSeparators(folder.filePath(QStringLiteral("missing.xml")));
    QtDialogs dialogs;
    QString secondFolder;
    const auto type = [&](QFileDialog &dialog) {
        secondFolder = dialog.directory().path();
        dialog.selectFile(missing);
        QMetaObject::invokeMethod(&dialog, "accept");
    };
    whenShown<QFileDialog>(type);
    QCOMPARE(dialogs.openFile(QStringLiteral("Open"), QStringLiteral("All files (*.*)|*.*")), missing);
    whenShown<QFileDialog>(type);
    QCOMPARE(dialogs.openFile(QStringLiteral("Open"), QStringLiteral("XML (*.xml)|*.xml")), missing);
    QCOMPARE(secondFolder, folder.path());
}

void TestQtDialogs::savingAsksNothing()
{
    QTemporaryDir folder;
    const QString taken = QDir::toNativeSeparators(folder.filePath(QStringLiteral("taken.xml")));
    QFile file(taken);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QtDialogs dialogs;
    whenShown<QFileDialog>([](QFileDialog &dialog) { QMetaObject::invokeMethod(&dialog, "accept"); });
    const QString filter = QStringLiteral("XML Documents (*.xml)|*.xml");
    QCOMPARE(dialogs.saveFile(QStringLiteral("Save as"), filter, folder.filePath(QStringLiteral("taken"))),
             taken);
}

void TestQtDialogs::ownPicturesFollowThePalette()
{
    const auto ink = [](const QColor &window) {
        QApplication::setPalette(QPalette(window));
        return themeIcon(QStringLiteral("xe-expand"))
            .pixmap(QSize(22, 22), 1.0)
            .toImage()
            .pixelColor(3, 3)
            .lightness();
    };
    const QPalette before = QApplication::palette();
    const int onLight = ink(Qt::white);
    const int onDark = ink(Qt::black);
    QApplication::setPalette(before);
    QVERIFY2(onLight < 64 && onDark > 192, qPrintable(QStringLiteral("%1 %2").arg(onLight).arg(onDark)));
}

void TestQtDialogs::everyPictureDraws()
{
    const QStringList names = QDir(QStringLiteral(":/icons")).entryList({QStringLiteral("xe-*.svg")});
    QVERIFY(names.size() >= 16);
    for (const QString &name : names) {
        const QImage image = themeIcon(QString(name).chopped(4)).pixmap(QSize(16, 16), 1.0).toImage();
        bool anything = false;
        for (int i = 0; i < image.width() * image.height(); ++i)
            anything = anything || qAlpha(image.pixel(i % image.width(), i / image.width())) > 200;
        QVERIFY2(anything, qPrintable(name));
    }
}

QTEST_MAIN(TestQtDialogs)
#include "test_qt_dialogs.moc"
