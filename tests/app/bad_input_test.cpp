// Files that no editor likes: none crashes, hangs or goes unreported, and the window can be used afterwards.
#include "window_fixture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <unistd.h>

using namespace app_test;
using dialogs::Answer;

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
    void contents_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<bool>("wellFormed");
        QTest::newRow("empty") << QByteArray() << false;
        QTest::newRow("faulty") << QByteArray("<a>\r\n<b>\r\n</a>") << false;
        QTest::newRow("binary") << QByteArray("\x7f"
                                              "ELF\x02\x01\x01\0\0\0\xff\xfe\0<a/>",
                                              20)
                                << false;
        QTest::newRow("zeros") << QByteArray(100000, '\0') << false;
        QTest::newRow("cut in a character") << QByteArray("<a>\xc3\xa4</a><!-- \xe2\x82") << false;
        QTest::newRow("wide, odd length") << QByteArray("\xff\xfe<\0a\0/\0>\0x", 11) << false;
        QTest::newRow("declared as what it is not")
            << QByteArray("<?xml version='1.0' encoding='UTF-16'?><a/>") << true;
        QTest::newRow("entity in itself")
            << QByteArray("<!DOCTYPE a [<!ENTITY b '&b;'>]><a>&b;</a>") << false;
        QTest::newRow("5,000 levels") << nested(5000) << true;
        QTest::newRow("one line of 50 MB") << "<a>" + QByteArray(50 << 20, 'x') + "</a>" << true;
    }

    void contents()
    {
        QFETCH(QByteArray, content);
        QFETCH(bool, wellFormed);
        const Folders folders;
        const QString path = folders.document(QStringLiteral("bad.xml"));
        write(path, content);
        Window window(folders);
        window.dialogs.answerFile(path);
        if (!wellFormed)
            window.dialogs.answer(Answer::Ok);
        window.choose("mnuOpen");
        QCOMPARE(window.tabs()->currentIndex(), wellFormed ? 0 : 1);
        if (!wellFormed)
            QVERIFY(window.lastMessage().startsWith(QStringLiteral("Error!")));
        if (wellFormed)
            window.choose("mnuxmlmode");
        QVERIFY(content.isEmpty() || !window.editor()->text().isEmpty());
        if (!wellFormed && !content.isEmpty())
            window.dialogs.answer(Answer::No);
        window.main->close();
        QVERIFY(window.left);
        QCOMPARE(contentOf(path), content);
    }

    void names_data()
    {
        QTest::addColumn<QString>("name");
        for (const char *name :
             {"with blank.xml", "100%25.xml", "it's.xml", "#fragment?query.xml",
              "\xd0\xb6\xe2\x82\xac\xe4\xb8\xad.xml", "&amp;<b>.xml", "line\nbreak.xml", "noending", ".xml"})
            QTest::newRow(name) << QString::fromUtf8(name);
    }

    void names()
    {
        QFETCH(QString, name);
        const Folders folders;
        const QString path = folders.document(name);
        write(path, "<named/>\r\n");
        Window window(folders);
        window.dialogs.answerFile(path);
        window.choose("mnuOpen");
        QCOMPARE(window.treeRoot(), QStringLiteral("named"));
        QCOMPARE(window.titleLine(), QStringLiteral("Zelph XML Editor - ") + path);
        window.choose("mnupreview");
        QCOMPARE(contentOf(path + QLatin1Char('0')), QByteArray("<named/>\r\n"));
        window.choose("mnunormalmod");
        window.choose("mnuSave");
        QCOMPARE(contentOf(path), QByteArray("<named/>\r\n"));
        window.main->close();
        QVERIFY(!QFile::exists(path + QLatin1Char('0')));
    }

    void unreadable()
    {
        if (geteuid() == 0)
            QSKIP("the superuser reads everything");
        const Folders folders;
        const QString path = folders.document(QStringLiteral("secret.xml"));
        write(path, "<a/>");
        QFile::setPermissions(path, {});
        Window window(folders);
        window.dialogs.answerFile(path);
        window.dialogs.answer(Answer::Ok);
        window.choose("mnuOpen");
        QVERIFY(window.lastMessage().startsWith(QStringLiteral("Error!")));
        QCOMPARE(window.treeRoot(), QStringLiteral("Element"));
    }

    // A folder is no file, so the dialog comes again.
    void folderInsteadOfAFile()
    {
        const Folders folders;
        QDir().mkpath(folders.document(QStringLiteral("folder.xml")));
        Window window(folders);
        window.dialogs.answerFile(folders.document(QStringLiteral("folder.xml")));
        window.dialogs.answerFile({});
        window.choose("mnuOpen");
        QCOMPARE(window.dialogs.files().size(), 2);
        QCOMPARE(window.treeRoot(), QStringLiteral("Element"));
    }

    void vanishesWhileOpen()
    {
        const Folders folders;
        const QString path = folders.document(QStringLiteral("gone.xml"));
        write(path, "<gone/>\r\n");
        Window window(folders, {path});
        QVERIFY(QFile::remove(path));
        window.choose("mnupreview");
        window.choose("mnuxmlmode");
        window.editor()->placeCaret(0, 5);
        window.typeIntoEditor(QStringLiteral(" "));
        window.dialogs.answer(Answer::Yes);
        window.main->close();
        QCOMPARE(contentOf(path), QByteArray("<gone />\r\n"));
    }

    // What could not be saved is not lost: the window stays, and says why.
    void folderVanishesWhileOpen()
    {
        const Folders folders;
        const QString folder = folders.document(QStringLiteral("sub"));
        QDir().mkpath(folder);
        write(folder + QStringLiteral("/a.xml"), "<a/>\r\n");
        Window window(folders, {folder + QStringLiteral("/a.xml")});
        QVERIFY(QDir(folder).removeRecursively());
        window.choose("mnuxmlmode");
        window.editor()->placeCaret(0, 2);
        window.typeIntoEditor(QStringLiteral(" "));
        window.dialogs.answer(Answer::Yes);
        window.main->close();
        QVERIFY(!window.left && window.main->isVisible());
        QVERIFY(!window.note().isEmpty());
        QCOMPARE(window.editor()->text(), QByteArray("<a />"));
    }
};

int main(int argc, char *argv[])
{
    BadInputTest tests;
    return runWindowTests(argc, argv, tests);
}
#include "bad_input_test.moc"
