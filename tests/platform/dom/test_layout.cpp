// What blanks do while nodes come, go and move, at random: a document laid out by rules of its own stays so,
// and a text stays what it was told to be.
#include "platform/dom/document.h"

#include <QRandomGenerator>
#include <QTest>

using namespace dom;

namespace {

// A document laid out line by line: how far a step goes and how a line ends.
struct Look
{
    QByteArray unit;
    QByteArray lineEnd;
};

// The node's markup as that look has it, whatever blanks it has now.
QByteArray laidOut(const Node &node, const Look &look, const QByteArray &indent = {})
{
    if (node.kind() != NodeKind::Element || !node.hasChildren())
        return node.startTag().replace("/>", ">") + (node.kind() == NodeKind::Element ? "</n>" : "");
    QByteArray out = node.startTag();
    for (const Node *child = node.firstChild(); child; child = child->nextSibling())
        out += look.lineEnd + indent + look.unit + laidOut(*child, look, indent + look.unit);
    return out + look.lineEnd + indent + "</n>";
}

class Walk
{
public:
    Walk(Document &document, quint32 seed) : document_(document), random_(seed) { }

    int below(int bound) { return int(random_.bounded(bound)); }

    Node *any(bool element)
    {
        Node *node = document_.documentElement();
        while (node->hasChildren() && below(5) != 0)
            node = node->child(below(int(node->childCount())));
        return element && node->kind() != NodeKind::Element ? node->parent() : node;
    }

    Node *made()
    {
        return below(4) == 0 ? *document_.createComment(QStringLiteral("c"))
                             : *document_.createElement(QStringLiteral("n"));
    }

    // Puts a node somewhere, which may be refused.
    void put(Node *node)
    {
        Node *parent = any(true);
        const int index = below(int(parent->childCount()) + 1);
        static_cast<void>(document_.insertBefore(parent, node, parent->child(index)).ok());
    }

    void step()
    {
        Node *node = any(false);
        Node *parent = node->parent();
        switch (below(6)) {
        case 0:
            return put(made());
        case 1:
            return static_cast<void>(document_.exchange(node, node->nextSibling()).ok());
        case 2:
            return static_cast<void>(node->subtreeCount() < 8 && document_.removeChild(parent, node).ok());
        case 3:
            if (node->subtreeCount() < 20)
                put(*document_.cloneNode(node, true));
            return;
        default:
            return put(node);
        }
    }

private:
    Document &document_;
    QRandomGenerator random_;
};

// <n/> is an element without children like any other.
QByteArray alike(QByteArray text) { return text.replace("<n/>", "<n></n>"); }

} // namespace

class TestLayout : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // However nodes move, the document is laid out as before. Children are looked at between the steps or
    // not: what nobody has looked at moves as a text.
    void staysLaidOut()
    {
        const Look looks[] = {{"\t", "\n"}, {"  ", "\r\n"}, {"    ", "\n"}, {" ", "\r"}};
        for (quint32 seed = 0; seed < 40; ++seed) {
            const Look &look = looks[seed % 4];
            Document maker;
            QVERIFY(!maker.load("<n><n><n/></n><n/></n>"));
            Walk making(maker, seed);
            for (int step = 0; step < 60; ++step)
                making.put(making.made());
            const QByteArray text = laidOut(*maker.documentElement(), look);
            Document document;
            QVERIFY(!document.load(text));
            Walk walk(document, seed);
            std::vector<ChangeSet> done;
            for (int step = 0; step < 60; ++step) {
                document.beginCommand();
                walk.step();
                done.push_back(document.endCommand());
                const QByteArray now = document.xml();
                if (now.count('\r') + now.count('\n') == 0)
                    break; // nothing is left to tell the look by
                QCOMPARE(alike(now), laidOut(*document.documentElement(), look));
                Document again;
                QVERIFY(!again.load(now));
                QCOMPARE(again.documentElement()->subtreeCount(), document.documentElement()->subtreeCount());
            }
            const QByteArray last = document.xml();
            for (auto changes = done.rbegin(); changes != done.rend(); ++changes)
                document.revert(*changes);
            QCOMPARE(document.xml(), text);
            for (const ChangeSet &changes : done)
                document.reapply(changes);
            QCOMPARE(document.xml(), last);
        }
    }

    // One text among elements: read again, it says the same, wherever it or anything else goes.
    void textIsWhatItSays()
    {
        const QString data = QStringLiteral(" a\tb ");
        for (quint32 seed = 0; seed < 40; ++seed) {
            Document document;
            QVERIFY(!document.load(
                "<n>\n\t<n>\n\t\t<n/>\n\t</n>\n\n\t<n/>\n\t<n>\n\t\t<n/>\n\t\t<n/>\n\t</n>\n</n>"));
            Walk walk(document, seed);
            Node *text = *document.createTextNode(data);
            walk.put(text);
            for (int step = 0; step < 60; ++step) {
                const int way = walk.below(6);
                Node *other = way == 0 ? text->previousSibling() : text->nextSibling();
                if (way < 2)
                    static_cast<void>(document.exchange(text, other).ok());
                else if (way == 2 && other)
                    static_cast<void>(document.removeChild(text->parent(), other).ok());
                else if (way == 3)
                    walk.put(walk.made());
                else
                    walk.put(way == 4 ? text : text->parent());
                Document again;
                QVERIFY(!again.load(document.xml()));
                QCOMPARE(again.documentElement()->text(), data);
                QCOMPARE(again.documentElement()->subtreeCount(), document.documentElement()->subtreeCount());
            }
        }
    }

    // Undo brings the bytes back also when what moved as a text was looked at and edited meanwhile.
    void undoAfterLookingInside()
    {
        const QByteArray text
            = "<n>\n\t<n>\n\t\t<m a='1'>\n\t\t\t<n>\n\t\t\t\t<n/>\n\t\t\t</n>\n\t\t</m>\n\t</n>\n</n>";
        Document document;
        QVERIFY(!document.load(text));
        const auto asCommand = [&document](auto edit) {
            document.beginCommand();
            edit();
            return document.endCommand();
        };
        Node *moved = document.documentElement()->child(0)->child(0);
        const ChangeSet move
            = asCommand([&] { QVERIFY(document.appendChild(document.documentElement(), moved).ok()); });
        const QByteArray after = document.xml();
        Node *below = moved->child(0)->child(0); // seen for the first time
        const ChangeSet edit
            = asCommand([&] { QVERIFY(document.setAttribute(below, QStringLiteral("x"), {}).ok()); });
        document.revert(edit);
        QCOMPARE(document.xml(), after);
        document.revert(move);
        QCOMPARE(document.xml(), text);
        QCOMPARE(moved->child(0)->child(0), below);
        QCOMPARE(below->xml(), QByteArray("<n/>"));
        document.reapply(move);
        QCOMPARE(document.xml(), after);
        document.reapply(edit);
        QVERIFY(document.xml().contains("\n\t\t\t<n x=\"\"/>\n"));
    }
};

QTEST_APPLESS_MAIN(TestLayout)
#include "test_layout.moc"
