#include "platform/system/settings_store.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using settings::SettingsStore;
using namespace Qt::StringLiterals;

class TestSettingsStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void textsComeBack()
    {
        const QString file = folder_.filePath(u"texts.ini"_s);
        const QString key = u"cEdit/colors/window"_s;
        const auto kept = [&](const QString &text) {
            SettingsStore store(file);
            store.setText(key, text);
            return store.flush().ok() ? SettingsStore(file).text(key, u"default"_s) : QString();
        };
        for (const QString &text : {u"-1"_s, u"a, b; \"c\" = %20"_s, u"@Invalid()"_s, u" ä\\n日本 "_s})
            QCOMPARE(kept(text), text);
        QCOMPARE(kept({}), u"default"_s);
        QCOMPARE(kept(u"a\0b"_s), u"a"_s);
    }

    void keySpellings()
    {
        SettingsStore store(folder_.filePath(u"keys.ini"_s));
        store.setText(u"\\cEdit\\m1\\3"_s, u"x"_s);
        QCOMPARE(store.text(u"/cEdit//m1\\3"_s), u"x"_s);
        QCOMPARE(store.text(u"cEdit/m1/4"_s, u"d"_s), u"d"_s);
    }

    // What a damaged file still holds stays, and what is set is written.
    void damagedFile()
    {
        QFile file(folder_.filePath(u"damaged.ini"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("[font]\nname=Courier, Mono\nbold=\n[never closed\nno value\n=x\n\xff\xfe%zz\n");
        file.close();
        SettingsStore store(file.fileName());
        store.setText(u"font/size"_s, u"12"_s);
        QVERIFY(store.flush().ok());
        const SettingsStore again(file.fileName());
        QCOMPARE(again.text(u"font/size"_s), u"12"_s);
        QCOMPARE(again.text(u"font/name"_s), u"Courier, Mono"_s);
        QCOMPARE(again.text(u"font/bold"_s, u"no"_s), u"no"_s);
    }

    void blobs()
    {
        const QString file = folder_.filePath(u"blobs.ini"_s);
        QByteArray blob;
        for (int i = 0; i < 256; ++i)
            blob += char(i);
        SettingsStore(file).setBlob(u"window/geometry"_s, blob);
        QCOMPARE(SettingsStore(file).blob(u"window/geometry"_s), blob);
        QCOMPARE(SettingsStore(file).blob(u"window/none"_s), QByteArray());
    }

    void unwritable()
    {
        SettingsStore store(folder_.path()); // a folder is no settings file
        store.setText(u"a"_s, u"b"_s);
        QVERIFY(!store.flush().ok());
    }

private:
    QTemporaryDir folder_;
};

QTEST_GUILESS_MAIN(TestSettingsStore)
#include "test_settings_store.moc"
