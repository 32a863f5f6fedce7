#include "platform/dom/document.h"
#include "tree/tree_model.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QTest>
#include <functional>

using namespace tree;

namespace {

using Visit = std::function<void(const QModelIndex &)>;
using namespace Qt::StringLiterals;

void walk(const QAbstractItemModel &model, const QModelIndex &node, const Visit &visit)
{
    visit(node);
    for (int row = 0; row < model.rowCount(node); ++row)
        walk(model, model.index(row, 0, node), visit);
}

QModelIndex randomNode(const QAbstractItemModel &model, QRandomGenerator &random)
{
    QModelIndex node = model.index(0, 0);
    while (model.rowCount(node) > 0 && random.bounded(4U))
        node = model.index(int(random.bounded(quint32(model.rowCount(node)))), 0, node);
    return node;
}

// The document node found by the path of sibling positions.
dom::Node *byPath(const dom::Document &document, const TreeModel &model, const QModelIndex &node)
{
    if (!node.parent().isValid())
        return document.documentElement();
    return byPath(document, model, node.parent())->child(model.GetNodeLevel(node));
}

QModelIndex at(const TreeModel &model, const QList<int> &path)
{
    QModelIndex node = model.index(0, 0);
    for (const int row : path)
        node = model.index(row, 0, node);
    return node;
}

QByteArray labels(const TreeModel &model, const QModelIndex &node)
{
    QStringList out;
    for (int row = 0; row < model.rowCount(node); ++row)
        out.append(model.index(row, 0, node).data().toString());
    return out.join(u' ').toUtf8();
}

// Every row shows the child at its position, and no two rows have the same key.
void compareToDocument(const dom::Document &document, const TreeModel &model)
{
    QSet<QString> keys;
    qint64 rows = 0;
    walk(model, model.index(0, 0), [&](const QModelIndex &node) {
        QCOMPARE(model.GetNodepar(node), byPath(document, model, node));
        QCOMPARE(model.rowCount(node), int(model.GetNodepar(node)->childCount()));
        keys.insert(node.data(TreeModel::KeyRole).toString());
        ++rows;
    });
    QCOMPARE(rows, document.documentElement()->subtreeCount());
    QCOMPARE(keys.size(), rows);
}

class Fixture
{
public:
    explicit Fixture(const QByteArray &text) : model(document)
    {
        document.load(text);
        model.nametree(document.documentElement());
    }

    dom::Document document;
    TreeModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::QtTest};
};

} // namespace

class TreeModelTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysAreThoseOfAFullBuild()
    {
        const QByteArray part = "<e>t<a><b><c/>u</b></a><!--n--></e>";
        const QByteArray below = part.repeated(70);
        Fixture f("<!-- head --><r>" + part + "<e>" + below + "</e>" + below + "</r>");
        QRandomGenerator random(7);
        for (int i = 0; i < 50; ++i) // looked at in any order
            randomNode(f.model, random).data();
        qint64 number = 0;
        walk(f.model, f.model.index(0, 0), [&](const QModelIndex &node) {
            QCOMPARE(node.data(TreeModel::KeyRole).toString(), QString::number(++number) + u'_');
        });
        QCOMPARE(f.model.trekey(), QString::number(number + 1) + u'_');
        QCOMPARE(f.model.TopLevelCount(), 2); // with the comment
        compareToDocument(f.document, f.model);
    }

    void keysGoOnAfterARebuild()
    {
        Fixture f("<r><a/><b><c/></b></r>"); // 1 to 4
        QVERIFY(!f.document.load("<r><d/></r>"));
        f.model.nametree(f.document.documentElement());
        QCOMPARE(at(f.model, {}).data(TreeModel::KeyRole).toString(), u"1_"_s);
        QCOMPARE(at(f.model, {0}).data(TreeModel::KeyRole).toString(), u"5_"_s);
        QCOMPARE(f.model.trekey(), u"6_"_s);
        // Also when nodes of the text have gone: what is left keeps its place in the numbering.
        QVERIFY(!f.document.load("<r><a/><b/><c/></r>"));
        f.model.nametree(f.document.documentElement());
        QVERIFY(f.document.removeChild(f.document.documentElement(), f.document.documentElement()->child(0)));
        f.model.nametree(f.document.documentElement());
        f.model.nametree(f.document.documentElement());
        QVERIFY(f.document.appendChild(f.document.documentElement(), *f.document.createElement(u"n"_s)));
        compareToDocument(f.document, f.model);
    }

    void drops()
    {
        const std::tuple<const char *, QList<int>, QList<int>, QByteArray, QByteArray> rows[] = {
            {"onto an element with children", {2}, {0}, "n x y", "<r><a><!--n--><x/><y/></a><b><c/></b></r>"},
            {"onto an empty element", {0, 0}, {1, 0}, "x", "<r><a><y/></a><b><c><x/></c></b><!--n--></r>"},
            {"upwards", {1, 0}, {}, "c a b n", "<r><c/><a><x/><y/></a><b></b><!--n--></r>"},
            {"onto its parent", {0, 1}, {0}, "y x", "<r><a><y/><x/></a><b><c/></b><!--n--></r>"},
            {"the first onto its parent", {0, 0}, {0}, "x y", "<r><a><x/><y/></a><b><c/></b><!--n--></r>"},
            {"onto a comment", {0}, {2}, "", {}},
            {"onto itself", {0}, {0}, "x y", {}},
            {"onto its descendant", {1}, {1, 0}, "", {}},
            {"the root", {}, {0}, "x y", {}},
        };
        for (const auto &[name, dragged, target, shownThen, xml] : rows) {
            const QByteArray before = "<r><a><x/><y/></a><b><c/></b><!--n--></r>";
            Fixture f(before);
            const QPersistentModelIndex node = at(f.model, dragged);
            const QPersistentModelIndex into = at(f.model, target);
            const QString key = node.data(TreeModel::KeyRole).toString();
            dom::Node *const shown = f.model.GetNodepar(node);

            const auto done = f.model.drop(node, into);
            QVERIFY2(done.ok() != xml.isEmpty() && done.reason().isEmpty() == done.ok(), name);
            QCOMPARE(f.document.xml(), done.ok() ? xml : before);
            QCOMPARE(labels(f.model, into), shownThen);
            QCOMPARE(node.data(TreeModel::KeyRole).toString(), key);
            QCOMPARE(f.model.GetNodepar(node), shown);
            compareToDocument(f.document, f.model);
        }
    }

    // Rows that nobody has looked at show the right nodes when others are dropped among them.
    void dropIntoUnseenRows()
    {
        QByteArray content;
        for (int i = 0; i < 300; ++i)
            content += "<n" + QByteArray::number(i) + "/>";
        Fixture f("<r><big>" + content + "</big><x/><y/></r>");
        QVERIFY(f.model.drop(at(f.model, {1}), at(f.model, {0})));
        QVERIFY(f.model.drop(at(f.model, {1}), at(f.model, {0})));
        QVERIFY(f.model.drop(at(f.model, {0, 100}), at(f.model, {})));
        const QModelIndex big = at(f.model, {1});
        QVERIFY(labels(f.model, big).startsWith("y x n0 n1 "));
        dom::Node *next = f.model.GetNodepar(f.model.index(200, 0, big));
        QVERIFY(f.document.insertBefore(next->parent(), *f.document.createElement(u"new"_s), next));
        QVERIFY(labels(f.model, big).contains(" n97 n99 n100 ")
                && labels(f.model, big).contains(" new n199 "));
        compareToDocument(f.document, f.model);
    }

    void hugeElement()
    {
        constexpr int count = 200'000;
        dom::Document document;
        QVERIFY(!document.load("<r>" + QByteArray("<a/><b><c/></b>").repeated(count / 2) + "</r>"));
        TreeModel model(document);
        model.nametree(document.documentElement());
        const QModelIndex root = model.index(0, 0);
        QCOMPARE(model.rowCount(root), count);
        for (int row = 0; row < count; ++row) // what a view asks of every row it lays out
            QCOMPARE(model.hasChildren(model.index(row, 0, root)), row % 2 == 1);
        QCOMPARE(model.madeNodes(), 1);
        QCOMPARE(model.index(count - 1, 0, root).data(TreeModel::KeyRole).toString(),
                 QString::number(count / 2 * 3) + u'_');
        QVERIFY(model.madeNodes() <= 1 + 64);
        QVERIFY(document.removeChild(document.documentElement(), document.documentElement()->child(100'000)));
        QCOMPARE(model.index(100'000, 0, root).data().toString(), u"b"_s);
    }

    void failedLoadLeavesTheTree()
    {
        Fixture f("<r><a/><b/></r>");
        QVERIFY(f.document.load("<r>").has_value());
        QCOMPARE(labels(f.model, at(f.model, {})), QByteArray("a b"));
        QCOMPARE(f.model.GetNodepar(at(f.model, {0})), nullptr);
        QVERIFY(!f.model.drop(at(f.model, {0}), at(f.model, {1})));
        QVERIFY(!f.document.load("<s/>"));
        f.model.nametree(f.document.documentElement());
        compareToDocument(f.document, f.model);
    }
};

QTEST_GUILESS_MAIN(TreeModelTest)
#include "tree_model_test.moc"
