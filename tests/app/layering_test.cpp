// Who may include whom: platform/ knows nobody above it, document/ knows platform/, the three folders side by
// side know document/ and platform/ but not each other, and app/ knows all.
#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

const QHash<QString, QStringList> &knownTo()
{
    static const QStringList low{u"platform"_s, u"document"_s};
    static const QHash<QString, QStringList> table{
        {u"platform"_s, {}}, {u"document"_s, {u"platform"_s}},
        {u"tree"_s, low},    {u"tidy"_s, low},
        {u"editor"_s, low},  {u"app"_s, low + QStringList{u"tree"_s, u"tidy"_s, u"editor"_s}},
    };
    return table;
}

// The include lines of a text that break the rule, seen from a folder.
QStringList strayIncludes(const QString &folder, const QString &text)
{
    static const QRegularExpression include(u"^\\s*#\\s*include\\s+\"([^\"]+)\""_s,
                                            QRegularExpression::MultilineOption);
    QStringList stray;
    for (auto it = include.globalMatch(text); it.hasNext();) {
        const QString path = it.next().captured(1);
        const QString other = path.section(QLatin1Char('/'), 0, 0);
        const bool fromRoot = path.contains(QLatin1Char('/')) && knownTo().contains(other);
        const bool generated = path.endsWith(u".moc"_s);
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
    void strayIncludeIsFound()
    {
        const std::tuple<const char *, const char *, bool> rows[] = {
            {"tree", "#include \"tree/tree_view.h\"", true},
            {"tree", "#include \"platform/result.h\"", true},
            {"tree", "#include \"editor/line_history.h\"", false}, // beside
            {"platform", "#include \"document/workspace.h\"", false}, // above
            {"app", "  # include \"menus.h\"", false}, // not from the root
            {"platform", "#include <QString>", true},
        };
        for (const auto &[folder, line, allowed] : rows)
            QVERIFY2(strayIncludes(QLatin1String(folder), QLatin1String(line)).isEmpty() == allowed, line);
    }

    void everyFileKeepsTheRule()
    {
        const QDir root(QStringLiteral(XE_SOURCE_FOLDER));
        int files = 0;
        QStringList faults;
        for (auto it = knownTo().cbegin(); it != knownTo().cend(); ++it) {
            QDirIterator walk(root.filePath(it.key()), {u"*.h"_s, u"*.cpp"_s}, QDir::Files,
                              QDirIterator::Subdirectories);
            while (walk.hasNext()) {
                QFile file(walk.next());
                QVERIFY(file.open(QIODevice::ReadOnly));
                ++files;
                for (const QString &path : strayIncludes(it.key(), QString::fromUtf8(file.readAll())))
                    faults.append(root.relativeFilePath(file.fileName()) + u" includes "_s + path);
            }
        }
        QVERIFY(files > 0);
        QVERIFY2(faults.isEmpty(), qPrintable(faults.join(QLatin1Char('\n'))));
    }
};

QTEST_APPLESS_MAIN(LayeringTest)
#include "layering_test.moc"
