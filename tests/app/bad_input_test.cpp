// Files that no editor likes: none crashes, hangs or goes unreported, and the window can be used afterwards.
#include "window_fixture.h"

#include <QDir>

#include <unistd.h>

using namespace app_test;
using dialogs::Answer;
using namespace Qt::StringLiterals;

namespace {

QByteArray nested(int levels)
{
    return QByteArray("<a>").repeated(levels) + QByteArray("</a>").repeated(levels);
}

} // namespace

class BadInputTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void contents()
    {
        const struct
        {
            const char *name;
            QByteArray content;
            bool wellFormed = false;
        } rows[] = {
            {"empty", {}},
            {"faulty", "<a>\r\n<b>\r\n</a>"},
            {"binary", QByteArray("\x7f\x45LF\x02\x01\x01\0\0\0\xff\xfe\0<a/>", 17)},
            {"zeros", QByteArray(100000, '\0')},
            {"cut in a character", "<a>\xc3\xa4</a><!-- \xe2\x82"},
            {"wide, odd length", QByteArray("\xff\xfe<\0a\0/\0>\0x", 11)},
            {"declared as what it is not", "<?xml version='1.0' encoding='UTF-16'?><a/>"},
            {"entity in itself", "<!DOCTYPE a [<!ENTITY b '&b;'>]><a>&b;</a>"},
            {"5,000 levels", nested(5000), true},
            {"one line of 50 MB", "<a>" + QByteArray(50 << 20, 'x') + "</a>", true},
        };
        for (const auto &[name, content, wellFormed] : rows) {
            Window window;
            const QString path = window.folders.document(u"bad.xml"_s);
            write(path, content);
            window.dialogs.answerFile(path);
            if (!wellFormed)
                window.dialogs.answer(Answer::Ok);
            window.choose("mnuOpen");
            QVERIFY2(window.tabs()->currentIndex() == (wellFormed ? 0 : 1), name);
            QVERIFY2(wellFormed || window.lastMessage().startsWith(u"Error!"_s), name);
            if (wellFormed)
                window.choose("mnuxmlmode");
            QVERIFY2(content.isEmpty() || !window.editor()->text().isEmpty(), name);
            window.main->close(); // nothing was changed, so nothing is asked
            QVERIFY2(window.left && contentOf(path) == content, name);
        }
    }

    void names()
    {
        for (const char *name : {"with blank.xml", "100%25.xml", "it's.xml", "#fragment?query.xml",
                                 "\xd0\xb6\xe2\x82\xac\xe4\xb8\xad.xml", "&amp;<b>.xml", "line\nbreak.xml",
                                 "noending", ".xml", "p\\q.xml"}) {
            Window window;
            const QString path = window.folders.document(QString::fromUtf8(name));
            const QString other = window.folders.document(u"p/q.xml"_s);
            QVERIFY(QDir().mkdir(window.folders.document(u"p"_s)));
            write(other, "<other/>");
            write(path, "<named/>\r\n");
            window.dialogs.answerFile(path);
            window.choose("mnuOpen");
            QVERIFY2(window.treeRoot() == u"named" && window.titleLine().endsWith(path), name);
            window.choose("mnupreview");
            QCOMPARE(contentOf(path + u'0'), QByteArray("<named/>\r\n"));
            window.choose("mnunormalmod");
            window.choose("mnuSave");
            QCOMPARE(contentOf(path), QByteArray("<named/>\r\n"));
            window.main->close();
            QVERIFY2(!QFile::exists(path + u'0'), name);
            QCOMPARE(contentOf(other), QByteArray("<other/>"));
        }
    }

    void unreadable()
    {
        if (geteuid() == 0)
            QSKIP("the superuser reads everything");
        Window window;
        const QString path = window.folders.document(u"secret.xml"_s);
        write(path, "<a/>");
        QFile::setPermissions(path, {});
        window.dialogs.answerFile(path);
        window.dialogs.answer(Answer::Ok);
        window.choose("mnuOpen");
        QVERIFY(window.lastMessage().startsWith(u"Error!"_s));
        QCOMPARE(window.treeRoot(), u"Element"_s);
    }

    // A folder is no file, so the dialog comes again.
    void folderInsteadOfAFile()
    {
        Window window;
        const QString folder = window.folders.document(u"folder.xml"_s);
        QVERIFY(QDir().mkpath(folder));
        window.dialogs.answerFile(folder);
        window.dialogs.answerFile({});
        window.choose("mnuOpen");
        QCOMPARE(window.dialogs.files().size(), 2);
        QCOMPARE(window.treeRoot(), u"Element"_s);
    }

    void vanishesWhileOpen()
    {
        Window window("gone.xml", "<gone/>\r\n");
        QVERIFY(QFile::remove(window.path));
        window.choose("mnupreview");
        window.typeAt(0, 5, " ");
        window.dialogs.answer(Answer::Yes);
        window.main->close();
        QCOMPARE(contentOf(window.path), QByteArray("<gone />\r\n"));
    }

    // What could not be saved is not lost: the window stays, and says why.
    void folderVanishesWhileOpen()
    {
        Window window("a.xml", "<a/>\r\n");
        QVERIFY(QFileInfo(window.path).dir().removeRecursively());
        window.typeAt(0, 2, " ");
        window.dialogs.answer(Answer::Yes);
        window.dialogs.answer(Answer::No); // nor elsewhere
        window.main->close();
        QVERIFY(!window.left && window.main->isVisible());
        QVERIFY(window.note().startsWith(u"Not saved: "_s));
        QCOMPARE(window.editor()->text(), QByteArray("<a />"));
    }
};

APP_TEST_MAIN(BadInputTest)
#include "bad_input_test.moc"
