// Who may include whom: platform/ knows nobody above it, document/ knows platform/, the three folders side by
// side know document/ and platform/ but not each other, and app/ knows all.
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>
#include <QRegularExpression>
#include <QStringList>
#include <QTest>

namespace {

const QHash<QString, QStringList> &knownTo()
{
    static const QStringList low{QStringLiteral("platform"), QStringLiteral("document")};
    static const QHash<QString, QStringList> table{
        {QStringLiteral("platform"), {}},
        {QStringLiteral("document"), {QStringLiteral("platform")}},
        {QStringLiteral("tree"), low},
        {QStringLiteral("tidy"), low},
        {QStringLiteral("editor"), low},
        {QStringLiteral("app"),
         low + QStringList{QStringLiteral("tree"), QStringLiteral("tidy"), QStringLiteral("editor")}},
    };
    return table;
}

// The include lines of a text that break the rule, seen from a folder.
QStringList strayIncludes(const QString &folder, const QString &text)
{
    static const QRegularExpression include(QStringLiteral("^\\s*#\\s*include\\s+\"([^\"]+)\""),
                                            QRegularExpression::MultilineOption);
    QStringList stray;
    for (auto it = include.globalMatch(text); it.hasNext();) {
        const QString path = it.next().captured(1);
        const QString other = path.section(QLatin1Char('/'), 0, 0);
        const bool fromRoot = path.contains(QLatin1Char('/')) && knownTo().contains(other);
        const bool generated = path.endsWith(QStringLiteral(".moc"));
        if (!generated && (!fromRoot || (other != folder && !knownTo()[folder].contains(other))))
            stray.append(path);
    }
    return stray;
}

} // namespace

class LayeringTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void strayIncludeIsFound_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("line");
        QTest::addColumn<bool>("allowed");
        QTest::newRow("own") << "tree"
                             << "#include \"tree/tree_view.h\"" << true;
        QTest::newRow("below") << "tree"
                               << "#include \"platform/result.h\"" << true;
        QTest::newRow("beside") << "tree"
                                << "#include \"editor/line_history.h\"" << false;
        QTest::newRow("above") << "platform"
                               << "#include \"document/workspace.h\"" << false;
        QTest::newRow("not from the root") << "app"
                                           << "  # include \"menus.h\"" << false;
        QTest::newRow("of the system") << "platform"
                                       << "#include <QString>" << true;
    }

    void strayIncludeIsFound()
    {
        QFETCH(QString, folder);
        QFETCH(QString, line);
        QTEST(strayIncludes(folder, line).isEmpty(), "allowed");
    }

    void everyFileKeepsTheRule()
    {
        const QDir root(QStringLiteral(XE_SOURCE_FOLDER));
        int files = 0;
        QStringList faults;
        for (auto it = knownTo().cbegin(); it != knownTo().cend(); ++it) {
            QDirIterator walk(root.filePath(it.key()), {QStringLiteral("*.h"), QStringLiteral("*.cpp")},
                              QDir::Files, QDirIterator::Subdirectories);
            while (walk.hasNext()) {
                QFile file(walk.next());
                QVERIFY(file.open(QIODevice::ReadOnly));
                ++files;
                for (const QString &path : strayIncludes(it.key(), QString::fromUtf8(file.readAll())))
                    faults.append(root.relativeFilePath(file.fileName()) + QStringLiteral(" includes ")
                                  + path);
            }
        }
        QVERIFY(files > 0);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
    }
};

QTEST_APPLESS_MAIN(LayeringTest)
#include "layering_test.moc"
