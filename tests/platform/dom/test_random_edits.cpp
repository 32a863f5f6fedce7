// Thousands of edits at random places: after each the document parses, counts and neighbours agree, notices
// come in pairs that tell a mirror everything; undoing all restores the bytes and redoing all repeats them.
#include "platform/dom/document.h"

#include <QHash>
#include <QRandomGenerator>
#include <QTest>

#include <vector>

using namespace dom;

namespace {

// Keeps the children of every node it was told of, from the notices alone.
class Mirror : public Observer
{
public:
    explicit Mirror(Node *top) { learn(top); }

    void aboutToInsert(Node *, qsizetype, Node *) override { ++pending; }
    void inserted(Node *parent, qsizetype index, Node *node) override
    {
        --pending;
        children[parent].insert(index, node);
        if (!children.contains(node))
            learn(node);
    }
    void aboutToRemove(Node *, qsizetype, Node *) override { ++pending; }
    void removed(Node *parent, qsizetype index, Node *) override
    {
        --pending;
        children[parent].removeAt(index);
    }
    void textChanged(Node *) override { }

    int pending = 0;
    QHash<Node *, QList<Node *>> children;

private:
    // A subtree as it stands; afterwards only notices count.
    void learn(Node *top)
    {
        QList<Node *> below;
        for (Node *child = top->firstChild(); child; child = child->nextSibling()) {
            below.append(child);
            learn(child);
        }
        children.insert(top, below);
    }
};

QByteArray randomDocument(QRandomGenerator &random, int depth = 0)
{
    static const char *const texts[]
        = {"text", " ", "\n  ", "&amp;", "<!--c-->", "<?p d?>", "<![CDATA[x]]>", "\r\n"};
    QByteArray out
        = "<n" + QByteArray::number(random.bounded(5)) + (random.bounded(3) ? "" : " x='1'\n y=\"2\"") + ">";
    const int count = random.bounded(depth == 0 ? 300 : 6);
    for (int i = 0; i < count; ++i) {
        if (depth < 5 && random.bounded(3) == 0)
            out += randomDocument(random, depth + 1);
        else
            out += texts[random.bounded(int(std::size(texts)))];
    }
    const qsizetype nameEnd = out.indexOf(out.at(3) == ' ' ? ' ' : '>');
    return out + "</" + out.sliced(1, nameEnd - 1) + '>';
}

class Walker
{
public:
    Walker(Document &document, QRandomGenerator &random) : document_(document), random_(random) { }

    // One edit; it may be refused.
    void step()
    {
        Node *node = anyNode();
        Node *parent = node->parent();
        switch (random_.bounded(9)) {
        case 0:
            return ignore(document_.appendChild(node, newNode()));
        case 1:
            return ignore(document_.insertBefore(parent, newNode(), node));
        case 2:
            return ignore(document_.removeChild(parent, node));
        case 3:
            return ignore(document_.insertBefore(anyNode(), node, nullptr));
        case 4: {
            Node *reference = anyNode();
            return ignore(document_.insertBefore(reference->parent(), node, reference));
        }
        case 5:
            return ignore(document_.setAttribute(node, word(), word()));
        case 6:
            return ignore(document_.setData(node, word()));
        case 7:
            return ignore(document_.renameElement(node, word()));
        default:
            return ignore(document_.replaceChild(parent, *document_.cloneNode(anyNode(), true), node));
        }
    }

private:
    static void ignore(const platform::Result<void> &) { }

    Node *anyNode()
    {
        Node *node = document_.documentElement();
        while (node->hasChildren() && random_.bounded(4) != 0)
            node = node->child(random_.bounded(int(node->childCount())));
        return node;
    }

    QString word()
    {
        static const char *const words[]
            = {"a", "b:c", "--", "]]>", "?>", "x<&>\"'", "1", "\n", "", "é", "\r\n ", "xmlns"};
        return QString::fromUtf8(words[random_.bounded(int(std::size(words)))]);
    }

    Node *newNode()
    {
        const auto made = random_.bounded(2) ? document_.createElement(QStringLiteral("new"))
            : random_.bounded(2)             ? document_.createComment(word())
                                             : document_.createTextNode(word());
        return made ? *made : nullptr;
    }

    Document &document_;
    QRandomGenerator &random_;
};

// Empty when all of the document agrees with itself and with the mirror.
QString faultOf(const Document &document, const Mirror &mirror)
{
    if (mirror.pending != 0)
        return QStringLiteral("a notice came without its pair");
    std::vector<Node *> open{document.documentElement()};
    qint64 count = 0;
    while (!open.empty()) {
        Node *node = open.back();
        open.pop_back();
        ++count;
        QList<Node *> children;
        for (Node *child = node->firstChild(); child; child = child->nextSibling()) {
            if (child->parent() != node || child->indexInParent() != children.size())
                return QStringLiteral("a child is not where it says");
            children.append(child);
            open.push_back(child);
        }
        const QList<Node *> told = mirror.children.value(node);
        if (children.size() != told.size() || !std::equal(children.begin(), children.end(), told.begin()))
            return QStringLiteral("the notices told something else");
        if (node->hasChildren() != !children.isEmpty())
            return QStringLiteral("hasChildren is wrong");
    }
    if (count != document.documentElement()->subtreeCount())
        return QStringLiteral("the count is wrong");
    const auto error = checkWellFormed(document.xml());
    // Renaming may leave prefixes undeclared; everything else must parse.
    return error && !error->reason.contains(QStringLiteral("is not defined")) ? error->reason : QString();
}

} // namespace

class TestRandomEdits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void walks_data();
    void walks();
};

void TestRandomEdits::walks_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 12; ++seed)
        QTest::addRow("seed %u", seed) << seed;
}

void TestRandomEdits::walks()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const QByteArray text = randomDocument(random);
    Document document;
    const auto error = document.load(text);
    QVERIFY2(!error, error ? qPrintable(error->reason) : "");
    Mirror mirror(document.documentNode());
    document.setObserver(&mirror);
    Walker walker(document, random);
    std::vector<ChangeSet> done;
    for (int step = 0; step < 300; ++step) {
        document.beginCommand();
        walker.step();
        done.push_back(document.endCommand());
        const QString fault = faultOf(document, mirror);
        QVERIFY2(fault.isEmpty(), qPrintable(QStringLiteral("step %1: ").arg(step) + fault));
    }
    const QByteArray edited = document.xml();
    for (auto changes = done.rbegin(); changes != done.rend(); ++changes)
        document.revert(*changes);
    QCOMPARE(document.xml(), text);
    QCOMPARE(faultOf(document, mirror), QString());
    for (ChangeSet &changes : done)
        document.reapply(changes);
    QCOMPARE(document.xml(), edited);
    QCOMPARE(faultOf(document, mirror), QString());
}

QTEST_APPLESS_MAIN(TestRandomEdits)
#include "test_random_edits.moc"
