// Unsaved texts in their folder: whole or known not to be, nobody else's, not for ever.
#include "document/recovery_writer.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace document;
using namespace Qt::StringLiterals;

namespace {

RecoveryCopy copyOf(const QByteArray &text, const QString &path = u"/d/a.xml"_s)
{
    return {{path, {}, NormalMode, QDateTime::fromMSecsSinceEpoch(1'700'000'000'123)}, text};
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void put(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
}

// As though written so many seconds from now.
void resizeAt(const QString &path, qint64 size, int seconds)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite) && file.resize(size));
    QVERIFY(
        file.setFileTime(QDateTime::currentDateTime().addSecs(seconds), QFileDevice::FileModificationTime));
}

} // namespace

class TestRecoveryStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { home_ = std::make_unique<QTemporaryDir>(); }

    void comesBackWhole()
    {
        const std::tuple<QString, QByteArray, QByteArray, bool> rows[] = {
            {u"/d/a.xml"_s, "<a/>", "UTF-8", false},
            {u"/d/\u00e4 \"b\"\n.xml"_s, "<a>\r\n\n\xc3\xa4</a>\n", "UTF-16LE", true},
            {QString(), {}, "UTF-8", false},
        };
        for (const auto &[path, text, encoding, other] : rows) {
            init();
            RecoveryCopy copy = copyOf(text, path);
            copy.head.form = {{encoding, other}, other ? files::FileEnd::None : files::FileEnd::CrLf};
            if (other) {
                copy.head.form.encoding.declared = {files::DeclaredBy::Html, "utf-16"};
                copy.head.form.encoding.block = 0x10FD00;
            }
            copy.head.mode = other ? XmlMode : NormalMode;
            leaveBehind(copy);
            const RecoveryStore store(folder());
            const auto found = store.waiting();
            QCOMPARE(found.size(), 1);
            QVERIFY(found[0].abandoned && !found[0].damaged);
            const auto opened = store.open(found[0]);
            QVERIFY(opened && opened->whole);
            QCOMPARE(opened->copy.text, text);
            for (const RecoveryHead &head : {opened->copy.head, found[0].head}) {
                QCOMPARE(head.path, path);
                QCOMPARE(head.form.encoding, copy.head.form.encoding);
                QCOMPARE(head.form.end, copy.head.form.end);
                QCOMPARE(head.mode, copy.head.mode);
                QCOMPARE(head.changed, copy.head.changed);
            }
        }
    }

    // Cut anywhere, and with any byte another: never taken for whole.
    void damageIsKnown()
    {
        const RecoveryCopy copy = copyOf("<a>\xc3\xa4</a>");
        const QByteArray file = sealedHead(copy) + copy.text;
        QVERIFY(openCopy(file).whole);
        for (qsizetype at = 0; at < file.size(); ++at) {
            QByteArray other = file;
            other[at] = char(other[at] ^ 0x20);
            for (const QByteArray &damaged : {file.first(at), other}) {
                const OpenedCopy opened = openCopy(damaged);
                QVERIFY2(!opened.whole && opened.copy.head.path.isEmpty(), damaged.constData());
                QCOMPARE(QString::fromUtf8(opened.copy.text).toUtf8(), opened.copy.text);
            }
        }
        leaveBehind(copy);
        QFile(RecoveryStore(folder()).waiting().at(0).file).resize(file.size() - 1);
        QVERIFY(RecoveryStore(folder()).waiting().at(0).damaged);
        // What is longer than any text is known without a look at what it says of itself.
        const qint64 tooLong = RecoveryStore::longestFile + 1;
        const QByteArray size = "\"size\":" + QByteArray::number(copy.text.size());
        QByteArray head = sealedHead(copy);
        QVERIFY(head.contains(size));
        head.replace(size, "\"size\":" + QByteArray::number(tooLong - head.size() - 9));
        const QString path = RecoveryStore(folder()).waiting().at(0).file;
        put(path, head);
        resizeAt(path, tooLong, 0);
        QCOMPARE(readBeginning(head).fileSize, tooLong);
        QVERIFY(RecoveryStore(folder()).waiting().at(0).damaged);
    }

    void windowsLeaveEachOtherAlone()
    {
        RecoveryStore other(folder());
        {
            RecoveryStore first(folder());
            QVERIFY(first.write(copyOf("<a/>")) && first.write(copyOf("<b/>")));
            QVERIFY(other.waiting().isEmpty());
        }
        WaitingText found = other.waiting().at(0);
        WaitingText again = found;
        QVERIFY(other.claim(found) && !RecoveryStore(folder()).claim(again));
        QVERIFY(other.adopt(found));
        QVERIFY(RecoveryStore(folder()).waiting().isEmpty());
        other.drop();
        found.claim.reset();
        QVERIFY(!other.claim(again));
    }

    void keptForAWhile()
    {
        RecoveryStore store(folder());
        for (int i = 0; i < RecoveryStore::mostKept + 2; ++i)
            QVERIFY(store.keep(copyOf(QByteArray::number(i))));
        auto texts = store.waiting();
        QCOMPARE(texts.size(), RecoveryStore::mostKept);
        for (const WaitingText &text : texts)
            QVERIFY(!text.abandoned && store.open(text)->copy.text.toInt() >= 2);
        // The newest may be of any size, and so may what is none of ours: no other goes for it.
        resizeAt(texts.at(3).file, RecoveryStore::mostBytes + 1, 9);
        const QString foreign = folder() + u"/9.kept"_s;
        put(foreign, {});
        resizeAt(foreign, RecoveryStore::longestFile + 1, 18);
        store.expire(QDateTime::currentDateTime());
        QCOMPARE(store.waiting().size(), RecoveryStore::mostKept + 1);
        resizeAt(texts.at(3).file, RecoveryStore::mostBytes + 1, -9);
        store.expire(QDateTime::currentDateTime());
        QCOMPARE(store.waiting().size(), RecoveryStore::mostKept);
        QVERIFY(QFile::exists(foreign) && !QFile::exists(texts.at(3).file));
        store.expire(QDateTime::currentDateTime().addDays(RecoveryStore::mostDays + 1));
        QVERIFY(store.waiting().isEmpty());
    }

    void nobodyElseReads()
    {
        QDir().mkdir(folder());
        QVERIFY(QFile::setPermissions(folder(), QFile::Permissions(0x7777)));
        leaveBehind(copyOf("<a/>"));
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther
            | QFile::WriteOther | QFile::ExeOther;
        const QString file = RecoveryStore(folder()).waiting().at(0).file;
        for (const QString &path : {folder(), file})
            QVERIFY(!(QFile::permissions(path) & others));
        // A link is not followed, neither as a file nor as the folder.
        put(home_->filePath(u"secret"_s), contentOf(file));
        QVERIFY(QFile::link(home_->filePath(u"secret"_s), folder() + u"/1.kept"_s));
        QCOMPARE(RecoveryStore(folder()).waiting().size(), 1);
        QVERIFY(QFile::link(folder(), home_->filePath(u"link"_s)));
        RecoveryStore linked(home_->filePath(u"link"_s));
        QVERIFY(!linked.write(copyOf("<b/>")));
    }

    void remainsAreCleared()
    {
        RecoveryStore store(folder());
        QVERIFY(store.write(copyOf("<a/>")));
        put(folder() + u"/0.part"_s, "half");
        put(folder() + u"/1.lock"_s, "");
        store.expire(QDateTime::currentDateTime());
        QCOMPARE(QDir(folder()).entryList(QDir::Files).size(), 2); // the text and its lock
    }

    void newestIsWritten()
    {
        QByteArray last;
        {
            RecoveryStore store(folder());
            RecoveryWriter writer(store, [](const platform::Result<void> &) {});
            for (int i = 0; i < 50; ++i)
                writer.write(copyOf(last = QByteArray::number(i).repeated(20'000)));
            writer.keep(copyOf("kept"));
        }
        RecoveryStore store(folder());
        QStringList found;
        for (const WaitingText &text : store.waiting()) {
            const QByteArray open = store.open(text)->copy.text;
            found.append(QString::fromLatin1(text.abandoned && open == last ? "last" : open.first(4)));
        }
        found.sort();
        QCOMPARE(found, (QStringList{u"kept"_s, u"last"_s}));
    }

private:
    QString folder() const { return home_->filePath(u"recovery"_s); }

    // As a window does that ends without a word.
    void leaveBehind(const RecoveryCopy &copy)
    {
        RecoveryStore store(folder());
        QVERIFY(store.write(copy));
    }

    std::unique_ptr<QTemporaryDir> home_;
};

QTEST_GUILESS_MAIN(TestRecoveryStore)
#include "test_recovery_store.moc"
