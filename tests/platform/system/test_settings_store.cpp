#include "platform/system/settings_store.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using settings::SettingsStore;

class TestSettingsStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsComeBack_data();
    void textsComeBack();
    void keySpellings();
    void handWrittenFile();
    void damagedFile();
    void blobs();
    void unwritable();

private:
    QTemporaryDir folder_;
};

void TestSettingsStore::textsComeBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("read");
    const auto same = [](const QString &text) { QTest::newRow(qPrintable(text)) << text << text; };
    same(QStringLiteral("-1"));
    same(QStringLiteral("True"));
    same(QStringLiteral("a, b; \"c\" = %20"));
    same(QStringLiteral("@Invalid()"));
    same(QStringLiteral(" ä\\n日本 "));
    QTest::newRow("empty") << QString() << QStringLiteral("default");
    QTest::newRow("cut at NUL") << QStringLiteral("a") + QChar() + QLatin1Char('b') << QStringLiteral("a");
}

void TestSettingsStore::textsComeBack()
{
    QFETCH(QString, text);
    const QString file = folder_.filePath(QStringLiteral("texts.ini"));
    {
        SettingsStore store(file);
        store.setText(QStringLiteral("cEdit/colors/window"), text);
        QVERIFY(store.flush().ok());
    }
    QTEST(SettingsStore(file).text(QStringLiteral("cEdit/colors/window"), QStringLiteral("default")), "read");
}

void TestSettingsStore::keySpellings()
{
    SettingsStore store(folder_.filePath(QStringLiteral("keys.ini")));
    store.setText(QStringLiteral("\\cEdit\\m1\\3"), QStringLiteral("x"));
    QCOMPARE(store.text(QStringLiteral("cEdit/m1/3")), QStringLiteral("x"));
    QCOMPARE(store.text(QStringLiteral("/cEdit//m1\\3")), QStringLiteral("x"));
    QCOMPARE(store.text(QStringLiteral("cEdit/m1/4"), QStringLiteral("d")), QStringLiteral("d"));
}

void TestSettingsStore::handWrittenFile()
{
    const QString name = folder_.filePath(QStringLiteral("hand.ini"));
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[font]\nname=Courier, Mono\nsize=\n");
    file.close();
    const SettingsStore store(name);
    QCOMPARE(store.text(QStringLiteral("font/name")), QStringLiteral("Courier, Mono"));
    QCOMPARE(store.text(QStringLiteral("font/size"), QStringLiteral("10")), QStringLiteral("10"));
}

// What it still holds stays, and what is set is written.
void TestSettingsStore::damagedFile()
{
    const QString name = folder_.filePath(QStringLiteral("damaged.ini"));
    QFile file(name);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("[font]\nname=Mono\n[never closed\nno value\n=x\n\xff\xfe%zz\n");
    file.close();
    SettingsStore store(name);
    store.setText(QStringLiteral("font/size"), QStringLiteral("12"));
    QVERIFY(store.flush().ok());
    QCOMPARE(SettingsStore(name).text(QStringLiteral("font/size")), QStringLiteral("12"));
    QCOMPARE(SettingsStore(name).text(QStringLiteral("font/name")), QStringLiteral("Mono"));
}

void TestSettingsStore::blobs()
{
    const QString file = folder_.filePath(QStringLiteral("blobs.ini"));
    QByteArray blob;
    for (int i = 0; i < 256; ++i)
        blob += char(i);
    SettingsStore(file).setBlob(QStringLiteral("window/geometry"), blob);
    QCOMPARE(SettingsStore(file).blob(QStringLiteral("window/geometry")), blob);
    QCOMPARE(SettingsStore(file).blob(QStringLiteral("window/none")), QByteArray());
}

void TestSettingsStore::unwritable()
{
    SettingsStore store(folder_.path()); // a folder is no settings file
    store.setText(QStringLiteral("a"), QStringLiteral("b"));
    QVERIFY(!store.flush().ok());
}

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "test_settings_store.moc"
