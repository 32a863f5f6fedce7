// Edits at places that a source of numbers chooses, and what must hold after each.
#pragma once

#include "platform/dom/document.h"
#include "platform/dom/serialiser.h"

#include <QHash>

#include <algorithm>
#include <functional>
#include <utility>
#include <vector>

namespace dom {

using Choose = std::function<int(int below)>; // 0 to below it
using Word = std::function<QString()>;

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

inline QByteArray randomDocument(const Choose &choose, int mostChildren, int depth = 0)
{
    static const char *const texts[]
        = {"text", " ", "\n  ", "&amp;", "<!--c-->", "<?p d?>", "<![CDATA[x]]>", "\r\n", "]]<i/>>x"};
    const QByteArray line = choose(2) ? "\n" + QByteArray(1 + depth, '\t') : QByteArray(); // or any content
    const QByteArray name = "n" + QByteArray::number(choose(5));
    QByteArray out = '<' + name + (choose(3) ? "" : " x='1'\n y=\"2\"") + '>';
    const int count = choose(depth == 0 ? mostChildren : 6);
    for (int i = 0; i < count; ++i) {
        out += line;
        if (depth < 5 && choose(3) == 0)
            out += randomDocument(choose, mostChildren, depth + 1);
        else if (!line.isEmpty())
            out += choose(2) ? "<!--\n-->" : "<i/>";
        else
            out += texts[choose(int(std::size(texts)))];
    }
    return out + (line.isEmpty() ? "" : line.chopped(1)) + "</" + name + '>';
}

inline QString randomWord(const Choose &choose)
{
    static const char *const words[]
        = {"a", "b:c", "--", "]]>", "?>", "x<&>\"'", "1", "\n", "", "é", "\r\n ", "xmlns", "]", "]]", ">"};
    return QString::fromUtf8(words[choose(int(std::size(words)))]);
}

class Walker
{
public:
    Walker(Document &document, Choose choose, Word word)
        : document_(document), choose_(std::move(choose)), word_(std::move(word))
    { }

    // One edit; it may be refused.
    void step()
    {
        Node *node = anyNode();
        Node *parent = node->parent();
        const QString x = QStringLiteral("x");
        const std::function<platform::Result<void>()> edits[] = {
            [&] { return document_.appendChild(node, newNode()); },
            [&] { return document_.insertBefore(parent, newNode(), node); },
            [&] { return document_.removeChild(parent, node); },
            [&] { return document_.insertBefore(anyNode(), node, nullptr); },
            [&] { return moveBefore(node, anyNode()); },
            [&] { return document_.setAttribute(node, word_(), word_()); },
            [&] { return document_.setData(node, word_()); },
            [&] { return document_.renameElement(node, word_()); },
            [&] { return document_.removeAttribute(node, x); },
            [&] {
                return document_.setAttributes(node,
                                               {{word_(), word_(), QStringLiteral("y")}, {x, word_(), {}}});
            },
            [&] { return document_.setInstruction(node, word_(), word_()); },
            [&] { return document_.setData(node, withWordAt(node->data())); },
            [&] { return document_.setShownText(node, withWordAt(node->shownText())); },
            [&] { return document_.setAttributeToText(parent, word_(), *node); },
            [&] {
                return document_.setAttribute(node, x, withWordAt(node->attribute(x).value_or(QString())));
            },
            [&] { return document_.exchange(node, parent->child(choose_(int(parent->childCount())))); },
            [&] { return document_.replaceChild(parent, *document_.cloneNode(anyNode(), true), node); },
        };
        static_cast<void>(edits[choose_(int(std::size(edits)))]());
    }

private:
    platform::Result<void> moveBefore(Node *node, Node *reference)
    {
        return document_.insertBefore(reference->parent(), node, reference);
    }

    QString withWordAt(const QString &text)
    {
        const int at = choose_(int(text.size()) + 1);
        return text.left(at) + word_() + text.mid(at + choose_(2));
    }

    Node *anyNode()
    {
        Node *node = document_.documentElement();
        while (node->hasChildren() && choose_(4) != 0)
            node = node->child(choose_(int(node->childCount())));
        return node;
    }

    Node *newNode()
    {
        const auto made = choose_(2) ? document_.createElement(QStringLiteral("new"))
            : choose_(2)             ? document_.createComment(word_())
            : choose_(2)             ? document_.createTextNode(word_())
            : choose_(2)             ? document_.createCDATASection(word_())
                                     : document_.createProcessingInstruction(word_(), word_());
        return made ? *made : nullptr;
    }

    Document &document_;
    Choose choose_;
    Word word_;
};

inline qint64 elementsIn(const Document &document)
{
    qint64 elements = 0;
    std::vector<Node *> open{document.documentElement()};
    while (!open.empty()) {
        Node *node = open.back();
        open.pop_back();
        elements += node->kind() == NodeKind::Element ? 1 : 0;
        for (Node *child = node->firstChild(); child; child = child->nextSibling())
            open.push_back(child);
    }
    return elements;
}

// Every node is found at its place in the text.
inline bool standsAtItsPlace(const Document &document, const Node &node)
{
    const Node &top = *document.documentNode();
    const QByteArray xml = node.xml();
    const qsizetype begin = Serialiser::beginOf(node, top);
    if (begin < 0 || !document.xml().sliced(begin).startsWith(xml))
        return false;
    if (!xml.isEmpty() && Serialiser::nodeAt(top, begin) != &node)
        return false;
    for (const Node *child = node.firstChild(); child; child = child->nextSibling())
        if (!standsAtItsPlace(document, *child))
            return false;
    return true;
}

// Empty when all of the document agrees with itself and with the mirror.
inline QString faultOf(const Document &document, const Mirror &mirror)
{
    if (mirror.pending != 0)
        return QStringLiteral("a notice came without its pair");
    std::vector<Node *> open{document.documentElement()};
    qint64 count = 0;
    qint64 elements = 0;
    while (!open.empty()) {
        Node *node = open.back();
        open.pop_back();
        ++count;
        elements += node->kind() == NodeKind::Element ? 1 : 0;
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
    const QByteArray text = document.xml();
    Document again;
    const auto error = again.load(text);
    if (!error && elementsIn(again) != elements)
        return QStringLiteral("read again, it has other elements");
    // Renaming may leave prefixes undeclared; everything else must parse.
    return error && !error->reason.contains(QStringLiteral("is not declared")) ? error->reason : QString();
}

} // namespace dom
