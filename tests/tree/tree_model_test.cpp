#include "platform/dom/document.h"
#include "tree/tree_model.h"

#include <QAbstractItemModelTester>
#include <QRandomGenerator>
#include <QTest>
#include <functional>

using namespace tree;

namespace {

// A document of about that many nodes of all kinds, always the same for a seed.
QByteArray randomElement(QRandomGenerator &random, int &nodes, int depth)
{
    static const char *const leaves[] = {"text &amp; more", "<!-- note -->", "<![CDATA[x]]>", "<?go on?>"};
    QByteArray content;
    const char *lastLeaf = nullptr;
    for (int i = int(random.bounded(9U)); i > 0 && nodes > 0; --i) {
        --nodes;
        const char *leaf = leaves[random.bounded(4U)];
        if (leaf == lastLeaf || (depth < 8 && random.bounded(2U)))
            leaf = nullptr;
        content += leaf ? QByteArray(leaf) : randomElement(random, nodes, depth + 1);
        lastLeaf = leaf;
    }
    return "<e a=\"1\">" + content + "</e>";
}

QByteArray randomDocument(quint32 seed, int nodes)
{
    QRandomGenerator random(seed);
    QByteArray content;
    while (nodes > 0)
        content += randomElement(random, --nodes, 1);
    return "<!-- head --><r>" + content + "</r>";
}

using Visit = std::function<void(const QModelIndex &)>;

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
    void keysAreThoseOfAFullBuild_data()
    {
        QTest::addColumn<quint32>("seed");
        QTest::addColumn<int>("nodes");
        for (const int nodes : {0, 1, 70, 1000, 20000})
            QTest::addRow("%d nodes", nodes) << quint32(nodes + 7) << nodes;
    }

    void keysAreThoseOfAFullBuild()
    {
        QFETCH(quint32, seed);
        QFETCH(int, nodes);
        Fixture f(randomDocument(seed, nodes));
        QRandomGenerator random(seed);
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
        QCOMPARE(at(f.model, {}).data(TreeModel::KeyRole).toString(), QStringLiteral("1_"));
        QCOMPARE(at(f.model, {0}).data(TreeModel::KeyRole).toString(), QStringLiteral("5_"));
        QCOMPARE(f.model.trekey(), QStringLiteral("6_"));
        // Also when nodes of the text have gone: what is left keeps its place in the numbering.
        QVERIFY(!f.document.load("<r><a/><b/><c/></r>"));
        f.model.nametree(f.document.documentElement());
        QVERIFY(f.document.removeChild(f.document.documentElement(), f.document.documentElement()->child(0)));
        f.model.nametree(f.document.documentElement());
        f.model.nametree(f.document.documentElement());
        QVERIFY(f.document.appendChild(f.document.documentElement(),
                                       *f.document.createElement(QStringLiteral("n"))));
        compareToDocument(f.document, f.model);
    }

    void followsTheDocument_data()
    {
        QTest::addColumn<quint32>("seed");
        for (quint32 seed = 1; seed <= 5; ++seed)
            QTest::addRow("seed %u", seed) << seed;
    }

    void followsTheDocument()
    {
        QFETCH(quint32, seed);
        Fixture f(randomDocument(seed, 600));
        QRandomGenerator random(seed);
        QPersistentModelIndex watched = randomNode(f.model, random);
        dom::Node *const watchedNode = f.model.GetNodepar(watched);
        const QByteArray before = f.document.xml();
        f.document.beginCommand();
        for (int i = 0; i < 200; ++i) {
            dom::Node *node = f.document.documentElement();
            while (node->hasChildren() && random.bounded(4U))
                node = node->child(random.bounded(quint32(node->childCount())));
            dom::Node *other = f.document.documentElement();
            const bool adds = random.bounded(2U);
            dom::Node *moved = adds ? *f.document.createComment(QString::number(i)) : node;
            dom::Node *into = adds && node->kind() == dom::NodeKind::Element ? node : other;
            if (random.bounded(4U) == 0 && node->parent() != f.document.documentNode() && node->parent())
                (void)f.document.removeChild(node->parent(), node);
            else // often refused
                (void)f.document.insertBefore(into, moved,
                                              into->child(random.bounded(quint32(into->childCount() + 1))));
            if (random.bounded(8U) == 0)
                randomNode(f.model, random).data();
        }
        compareToDocument(f.document, f.model);
        if (watched.isValid())
            QCOMPARE(f.model.GetNodepar(watched), watchedNode);
        dom::ChangeSet changes = f.document.endCommand();
        f.document.revert(changes);
        QCOMPARE(f.document.xml(), before);
        compareToDocument(f.document, f.model);
        f.document.reapply(changes);
        compareToDocument(f.document, f.model);
    }

    void drops_data()
    {
        QTest::addColumn<QList<int>>("dragged");
        QTest::addColumn<QList<int>>("target");
        QTest::addColumn<bool>("taken");
        QTest::addColumn<QByteArray>("xml");
        QTest::addColumn<QByteArray>("rows"); // of the target, afterwards

        const auto row
            = [](const char *name, QList<int> dragged, QList<int> target, const char *rows, const char *xml) {
                  const bool taken = xml != nullptr;
                  QTest::newRow(name) << dragged << target << taken
                                      << QByteArray(taken ? xml : "<r><a><x/><y/></a><b><c/></b><!--n--></r>")
                                      << QByteArray(rows);
              };
        row("onto an element with children", {2}, {0}, "x y n", "<r><a><!--n--><x/><y/></a><b><c/></b></r>");
        row("onto an empty element", {0, 0}, {1, 0}, "x", "<r><a><y/></a><b><c><x/></c></b><!--n--></r>");
        row("upwards", {1, 0}, {}, "a b n c", "<r><c/><a><x/><y/></a><b></b><!--n--></r>");
        row("onto its parent", {0, 1}, {0}, "x y", "<r><a><y/><x/></a><b><c/></b><!--n--></r>");
        row("the first onto its parent", {0, 0}, {0}, "y x", "<r><a><x/><y/></a><b><c/></b><!--n--></r>");
        row("onto a comment", {0}, {2}, "", nullptr);
        row("onto itself", {0}, {0}, "x y", nullptr);
        row("onto its descendant", {1}, {1, 0}, "", nullptr);
        row("the root", {}, {0}, "x y", nullptr);
    }

    void drops()
    {
        QFETCH(QList<int>, dragged);
        QFETCH(QList<int>, target);
        QFETCH(bool, taken);
        Fixture f("<r><a><x/><y/></a><b><c/></b><!--n--></r>");
        const QPersistentModelIndex node = at(f.model, dragged);
        const QPersistentModelIndex into = at(f.model, target);
        const QString key = node.data(TreeModel::KeyRole).toString();
        dom::Node *const shown = f.model.GetNodepar(node);

        const auto done = f.model.drop(node, into);
        QCOMPARE(done.ok(), taken);
        QCOMPARE(done.reason().isEmpty(), taken);
        QTEST(f.document.xml(), "xml");
        QTEST(labels(f.model, into), "rows");
        QCOMPARE(node.data(TreeModel::KeyRole).toString(), key);
        QCOMPARE(f.model.GetNodepar(node), shown);

        f.model.nametree(f.document.documentElement()); // brings the rows back into the document's order
        compareToDocument(f.document, f.model);
    }

    // Rows that nobody has looked at keep showing the right nodes when others are dropped among them.
    void dropIntoUnseenRows()
    {
        QByteArray content;
        for (int i = 0; i < 300; ++i)
            content += "<n" + QByteArray::number(i) + "/>";
        Fixture f("<r><big>" + content + "</big><x/><y/></r>");
        QVERIFY(f.model.drop(at(f.model, {1}), at(f.model, {0})));
        QVERIFY(f.model.drop(at(f.model, {1}), at(f.model, {0})));
        QVERIFY(f.model.drop(at(f.model, {0, 100}), at(f.model, {})));
        const QModelIndex big = at(f.model, {0});
        QCOMPARE(f.model.rowCount(big), 301);
        for (int row = 298; row >= 0; --row)
            QCOMPARE(f.model.index(row, 0, big).data().toString(),
                     u'n' + QString::number(row < 100 ? row : row + 1));
        QVERIFY(labels(f.model, big).endsWith("n299 x y"));
        // What is inserted stands in the same place among its neighbours, whatever their positions are.
        dom::Node *next = f.model.GetNodepar(f.model.index(200, 0, big));
        QVERIFY(
            f.document.insertBefore(next->parent(), *f.document.createElement(QStringLiteral("new")), next));
        QVERIFY(labels(f.model, big).contains(" n200 new n201 "));
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
        for (int row = 0; row < count; ++row) { // what a view asks of every row it lays out
            const QModelIndex node = model.index(row, 0, root);
            QVERIFY(node.flags() & Qt::ItemIsEnabled);
            QCOMPARE(model.hasChildren(node), row % 2 == 1);
        }
        QCOMPARE(model.madeNodes(), 1);
        QCOMPARE(model.index(count - 1, 0, root).data(TreeModel::KeyRole).toString(),
                 QString::number(count / 2 * 3) + u'_');
        QVERIFY(model.madeNodes() <= 1 + 64);
        QVERIFY(document.removeChild(document.documentElement(), document.documentElement()->child(100'000)));
        QCOMPARE(model.index(100'000, 0, root).data().toString(), QStringLiteral("b"));
        dom::Node *const element = document.documentElement();
        for (int i = 0; i < 300; ++i)
            QVERIFY(document.insertBefore(element, *document.createComment(QString::number(i)),
                                          element->child(50'000)));
        for (const int row : {49'999, 50'000, 50'127, 50'299, 50'300})
            QCOMPARE(model.GetNodepar(model.index(row, 0, root)), element->child(row));
        QVERIFY(model.madeNodes() <= 300 + 8 * 64);
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
