// Thousands of commands at random: the tree mirrors the document after each, the text parses, and all of it
// can be taken back and done again.
#include "command_desk.h"

#include <QRandomGenerator>
#include <array>

using namespace tree_test;
using namespace Qt::StringLiterals;

namespace {

QByteArray randomContent(QRandomGenerator &random, int depth)
{
    static const char *const pieces[] = {"text &amp; more",
                                         "<!-- note -->",
                                         "<![CDATA[x]]>",
                                         "<?go on?>",
                                         "\n  ",
                                         "<b>only</b>",
                                         "&e;",
                                         "<p:q p:n='1'/>",
                                         "<e/>",
                                         "<e xmlns:q='v'>&f;<i>&f;</i></e>",
                                         "<e xmlns='w'><i/></e>",
                                         "<e xml:space='preserve'> <i/> </e>"};
    QByteArray out;
    for (int i = int(random.bounded(7U)); i > 0; --i) {
        if (depth < 5 && random.bounded(2U))
            out += "<e" + QByteArray(random.bounded(4U) ? "" : " xmlns:p='v'") + ">"
                + randomContent(random, depth + 1) + "</e>";
        else
            out += pieces[random.bounded(quint32(std::size(pieces)))];
    }
    return out;
}

QByteArray randomDocument(QRandomGenerator &random)
{
    return "<!DOCTYPE r [<!ENTITY e \"n\"><!ENTITY f \"<q:y/>\">]>\r\n<r xmlns:p=\"u\">\r\n"
        + randomContent(random, 0) + "\r\n <x>" + randomContent(random, 0) + "</x></r>\r\n";
}

class Walk
{
public:
    explicit Walk(quint32 seed) : random_(seed), desk_(randomDocument(random_)) { }

    void run(int steps)
    {
        const QByteArray text = desk_.document.xml();
        const QString tree = bareShape();
        for (int i = 0; i < steps; ++i) {
            step();
            check();
            if (QTest::currentTestFailed())
                return;
        }
        comesBack(text, tree);
    }

private:
    QString bareShape() const { return desk_.shape().remove(u'*').remove(u'+'); }

    QModelIndex randomNode()
    {
        QModelIndex node = desk_.model.index(0, 0);
        while (desk_.model.rowCount(node) > 0 && random_.bounded(5U))
            node = desk_.model.index(int(random_.bounded(quint32(desk_.model.rowCount(node)))), 0, node);
        return node;
    }

    void step()
    {
        static const char *const names[]
            = {"element", "text",  "cdata",  "comment", "pi",        "up",    "down",
               "left",    "right", "up",     "down",    "left",      "right", "cut",
               "copy",    "paste", "delete", "delete",  "attribute", "undo",  "redo"};
        if (random_.bounded(3U) == 0)
            openAndClose();
        if (random_.bounded(20U) == 0)
            copyElsewhere();
        const quint32 which = random_.bounded(quint32(std::size(names)) + 4);
        if (random_.bounded(3U) || !desk_.face.selected().parent().isValid())
            desk_.face.select(randomNode());
        const bool root = !desk_.face.selected().parent().isValid();
        if (which >= std::size(names) && which < std::size(names) + 3) {
            (void)desk_.commands.drop(randomNode(), randomNode());
        } else if (which >= std::size(names)) {
            editOfOthers();
        } else if (const QByteArrayView name = names[which];
                   !root || name != QByteArrayView("delete") || random_.bounded(10U) == 0) {
            desk_.run(QString::fromLatin1(name));
        }
    }

    void openAndClose()
    {
        const quint32 which = random_.bounded(20U);
        if (which == 0) {
            desk_.model.closeAll();
        } else if (which < 4) {
            tree::Opening opening = desk_.model.openAll();
            if (opening.step(random_.bounded(30U)))
                opening.stop();
        } else {
            desk_.model.setOpen(randomNode(), random_.bounded(3U));
        }
    }

    // In another program, another window, or the text.
    void copyElsewhere()
    {
        using Form = tree::Clip::Form;
        static const char *const pieces[] = {"plain & <plain>",
                                             "<b/> <c>&e;</c>\r\n<!--c-->",
                                             " a<b>x</b> <i/> ",
                                             "<p:b p:n='2'><e xmlns='w'/></p:b>",
                                             "]]",
                                             "&gt; <b>]]</b>",
                                             "<?xml version='1.0'?>",
                                             "<!DOCTYPE b [<!ENTITY e 'z'>]>",
                                             "<b q:n='&e;'>",
                                             "</b>",
                                             "<![CDATA[",
                                             "<!--",
                                             "-->",
                                             "<?x ",
                                             "?>",
                                             "</node>",
                                             "<node>",
                                             "&f;",
                                             "\r\n",
                                             "\n "};
        QString clip;
        for (quint32 i = 1 + random_.bounded(4U); i > 0; --i)
            clip += QLatin1StringView(pieces[random_.bounded(quint32(std::size(pieces)))]);
        const Form form = std::array{Form::Text, Form::Source, Form::Node}[random_.bounded(3U)];
        desk_.clipboard.set(form, form == Form::Node ? u"<node xmlns:p='v'>%1</node>"_s.arg(clip) : clip);
    }

    void editOfOthers()
    {
        dom::Node *node = desk_.model.GetNodepar(randomNode());
        (void)desk_.commands.edit(u"Other"_s, [&]() -> platform::Result<void> {
            if (node->kind() != dom::NodeKind::Element)
                return desk_.document.setData(node, u"set %1"_s.arg(random_.bounded(100)));
            auto made = desk_.document.createElement(u"made"_s);
            (void)desk_.document.appendChild(*made, *desk_.document.createComment(u"in"_s));
            (void)desk_.document.insertBefore(node, *made, node->firstChild());
            desk_.model.setLabelFrom(desk_.model.find(node));
            if (random_.bounded(3U) == 0)
                return platform::Failure{u"changed its mind"_s};
            return desk_.document.renameElement(node, u"n%1"_s.arg(random_.bounded(9)));
        });
    }

    void check()
    {
        keys_.clear();
        shown_ = 0;
        checkBelow(desk_.model.index(0, 0), desk_.document.documentElement(), true);
        QCOMPARE(desk_.model.shownCount(), shown_);
        const auto error = dom::checkWellFormed(desk_.document.xml());
        if (error)
            QFAIL(qPrintable(error->reason + QString::fromUtf8(desk_.document.xml())));
    }

    void checkBelow(const QModelIndex &row, dom::Node *node, bool seen)
    {
        QCOMPARE(desk_.model.positionOf(row), seen ? shown_ : -1);
        if (seen) {
            QCOMPARE(desk_.model.shownAt(shown_), row);
            QCOMPARE(desk_.model.shownAfter(row), desk_.model.shownAt(++shown_));
        }
        QCOMPARE(desk_.model.GetNodepar(row), node);
        const QString key = row.data(tree::TreeModel::KeyRole).toString();
        QVERIFY2(!keys_.contains(key), qPrintable(key));
        keys_.insert(key);
        QCOMPARE(qsizetype(desk_.model.rowCount(row)), node->childCount());
        for (int i = 0; i < desk_.model.rowCount(row); ++i) {
            const QModelIndex child = desk_.model.index(i, 0, row);
            dom::Node *shown = desk_.model.GetNodepar(child);
            QCOMPARE(shown, node->child(i));
            checkBelow(child, shown, seen && desk_.model.isOpen(row));
        }
    }

    void comesBack(const QByteArray &text, const QString &tree)
    {
        QList<QByteArray> texts;
        QStringList shapes;
        while (!desk_.commands.redoName().isEmpty())
            desk_.run(u"redo"_s);
        while (!desk_.commands.undoName().isEmpty()) {
            texts.prepend(desk_.document.xml());
            shapes.prepend(bareShape());
            desk_.run(u"undo"_s);
        }
        QVERIFY(!texts.isEmpty());
        QCOMPARE(desk_.document.xml(), text);
        QCOMPARE(bareShape(), tree);
        for (qsizetype i = 0; i < texts.size(); ++i) {
            desk_.run(u"redo"_s);
            QCOMPARE(desk_.document.xml(), texts[i]);
            QCOMPARE(bareShape(), shapes[i]);
        }
        QVERIFY(desk_.commands.redoName().isEmpty());
    }

    QRandomGenerator random_;
    CommandDesk desk_;
    QSet<QString> keys_;
    qint64 shown_ = 0;
};

} // namespace

class CommandWalkTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void walk()
    {
        for (quint32 seed = 1; seed <= 40 && !QTest::currentTestFailed(); ++seed) {
            qInfo("walk %u", seed); // which names the one that failed
            Walk(seed).run(200);
        }
    }
};

QTEST_GUILESS_MAIN(CommandWalkTest)
#include "command_walk_test.moc"
