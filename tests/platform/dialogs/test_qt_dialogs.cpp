// The dialogs that people see, as far as a machine can answer them.
#include "platform/dialogs/file_filter.h"
#include "platform/dialogs/message_text.h"
#include "platform/dialogs/qt_dialogs.h"

#include <QtTest>
#include <QtWidgets>

using namespace dialogs;
using namespace Qt::StringLiterals;

class TestQtDialogs : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The desktop's own file dialog could not be operated from here.
    void initTestCase() { QApplication::setAttribute(Qt::AA_DontUseNativeDialogs); }

    void filters()
    {
        const std::pair<QString, QString> rows[] = {
            {u"XML Documents (*.xml)|*.xml|XSLT Stylesheets (*.xsl;*.fo)|*.xsl;*.fo|All files (*.*)|*.*"_s,
             u"XML Documents (*.xml)|XSLT Stylesheets (*.xsl *.fo)|All files (*)"_s},
            {u"Files (old)|*.a; *.b"_s, u"Files (old) (*.a *.b)"_s},
            {u"Name||Other|*.o|Odd"_s, u"Other (*.o)"_s},
            {{}, {}},
        };
        for (const auto &[filter, expected] : rows)
            QCOMPARE(nameFilters(filter).join(u'|'), expected);
        QCOMPARE(defaultEnding(u"XSLT (*.xsl *.xslt)"_s), u"xsl"_s);
        QCOMPARE(defaultEnding(u"All files (*)"_s), QString());
        const QStringList filters{u"XML (*.xml)"_s, u"XSLT (*.xsl *.xslt)"_s, u"All files (*)"_s};
        QCOMPARE(filterFor(u"a.XSLT"_s, filters), filters[1]);
        QCOMPARE(filterFor(u"a.xml.txt"_s, filters), filters[2]);
        QCOMPARE(filterFor(u"a"_s, filters.first(2)), QString());
        QCOMPARE(filterFor(u"a.svg"_s, filters + QStringList{u"SVG (*.svg)"_s}), u"SVG (*.svg)"_s);
    }

    void texts()
    {
        const QString smile = u"\U0001F600"_s;
        const std::pair<QString, QString> rows[] = {
            {u"Error!\r\n\r\nLine              :  2\r\n"_s, u"Error!\n\nLine              :  2\n"_s},
            {QString(51, u'x'), QString(50, u'x') + QChar(0x200B) + u'x'},
            {QString(49, u'x') + smile + u'y', QString(49, u'x') + smile + QChar(0x200B) + u'y'},
            {u"ab "_s.repeated(201), u"ab "_s.repeated(200) + QChar(0x2026)},
            {QString(30, u'\n'), QString(25, u'\n') + QChar(0x2026)},
        };
        for (const auto &[text, expected] : rows)
            QCOMPARE(fittedText(text), expected);
        const QString path = QString(200, u'p');
        QCOMPARE(copiedText(fittedText(path)), path);
    }

    void messageBoxes()
    {
        const std::tuple<Buttons, Qt::Key, Answer> rows[] = {
            {Buttons::Ok, Qt::Key_Escape, Answer::Ok},
            {Buttons::YesNo, Qt::Key_Return, Answer::Yes},
            {Buttons::YesNo, Qt::Key_Escape, Answer::No},
            {Buttons::NoYes, Qt::Key_Return, Answer::No},
            {Buttons::NoYes, Qt::Key_Escape, Answer::No},
            {Buttons::YesNoCancel, Qt::Key_Return, Answer::Yes},
            {Buttons::YesNoCancel, Qt::Key_Escape, Answer::Cancel},
        };
        const QString text = u"<b>a & b</b>"_s;
        for (const auto &[buttons, key, answer] : rows) {
            whenShown<QMessageBox>([&](QMessageBox &box) {
                QTest::keyClick(&box, key);
                QVERIFY(box.text() == text && box.textFormat() == Qt::PlainText);
            });
            QCOMPARE(QtDialogs().message(Icon::Question, buttons, text), answer);
        }
    }

    void longReportsFitTheScreen()
    {
        QSize size;
        whenShown<QMessageBox>([&](QMessageBox &box) {
            size = box.size();
            box.reject();
        });
        QtDialogs().message(Icon::Exclamation, Buttons::Ok,
                            u"Error!\r\n\r\nSource Text :  "_s + QString(100000, u'x'));
        const QSize screen = QApplication::primaryScreen()->availableSize();
        QVERIFY(size.isValid() && size.width() < screen.width() && size.height() < screen.height());
    }

    void openingAMissingFileIsAllowed()
    {
        const QTemporaryDir folder;
        const QString missing = QDir::toNativeSeparators(folder.filePath(u"missing.xml"_s));
        const QTemporaryDir first;
        QtDialogs dialogs;
        dialogs.beginIn(first.path());
        QStringList at; // the folders shown at first
        for (const QString &filter : {u"All files (*.*)|*.*"_s, u"XML (*.xml)|*.xml"_s}) {
            whenShown<QFileDialog>([&](QFileDialog &dialog) {
                at.append(dialog.directory().path());
                dialog.selectFile(missing);
                QMetaObject::invokeMethod(&dialog, "accept");
            });
            QCOMPARE(dialogs.openFile(u"Open"_s, filter), missing);
        }
        QCOMPARE(at, (QStringList{first.path(), folder.path()}));
    }

    void savingAsksNothing()
    {
        const QTemporaryDir folder;
        QFile taken(folder.filePath(u"taken.xml"_s));
        QVERIFY(taken.open(QIODevice::WriteOnly));
        whenShown<QFileDialog>([](QFileDialog &dialog) { QMetaObject::invokeMethod(&dialog, "accept"); });
        const QString filter = u"XML Documents (*.xml)|*.xml"_s;
        QCOMPARE(QtDialogs().saveFile(u"Save as"_s, filter, folder.filePath(u"taken"_s)),
                 QDir::toNativeSeparators(taken.fileName()));
    }

    // Where the folder has gone that a file was in, its name is proposed in one that is there.
    void proposesWhereThereIsAFolder()
    {
        const QTemporaryDir folder;
        for (const QString &name : {u"gone/deep/a.xml"_s, u"a\\b.xml"_s}) {
            whenShown<QFileDialog>([](QFileDialog &dialog) { QMetaObject::invokeMethod(&dialog, "accept"); });
            const QString expected = QDir(folder.path()).filePath(name.section(u'/', -1));
            QCOMPARE(QtDialogs().saveFile(u"Save as"_s, u"All files (*.*)|*.*"_s, folder.filePath(name)),
                     expected);
        }
    }

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

QTEST_MAIN(TestQtDialogs)
#include "test_qt_dialogs.moc"
