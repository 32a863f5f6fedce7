// A document, its tree and the commands on it, with everything around them standing in.
#pragma once

#include "plain_clipboard.h"
#include "plain_face.h"
#include "platform/dialogs/scripted_dialogs.h"
#include "tree/node_commands.h"

#include <QAbstractItemModelTester>
#include <QMap>
#include <QTest>

namespace tree_test {

class CommandDesk
{
public:
    explicit CommandDesk(const QByteArray &text)
        : model(document), face(model), commands(model, document, face, dialogs, clipboard)
    {
        QObject::connect(&commands, &tree::NodeCommands::noted, &model,
                         [this](const QString &reason) { notes.append(reason); });
        commands.setNewDocument("<?xml version=\"1.0\"?>\r\n<Element/>");
        load(text);
    }

    void load(const QByteArray &text)
    {
        document.load(text);
        model.nametree(document.documentElement());
        face.setOpen(model.index(0, 0), true);
    }

    // The row at a path such as "0/2"; empty for the root.
    QModelIndex at(const QString &path) const
    {
        QModelIndex node = model.index(0, 0);
        for (const QString &row : path.split(u'/', Qt::SkipEmptyParts))
            node = model.index(row.toInt(), 0, node);
        return node;
    }

    void select(const QString &path) { face.select(at(path)); }

    // Runs a command by its short name; false when there is none of it.
    bool run(const QString &name)
    {
        using Direction = tree::NodeCommands::Direction;
        using dom::NodeKind;
        static const QMap<QString, std::function<void(tree::NodeCommands &)>> known{
            {QStringLiteral("element"), [](auto &c) { c.insert(NodeKind::Element); }},
            {QStringLiteral("text"), [](auto &c) { c.insert(NodeKind::Text); }},
            {QStringLiteral("cdata"), [](auto &c) { c.insert(NodeKind::CData); }},
            {QStringLiteral("comment"), [](auto &c) { c.insert(NodeKind::Comment); }},
            {QStringLiteral("pi"), [](auto &c) { c.insert(NodeKind::ProcessingInstruction); }},
            {QStringLiteral("up"), [](auto &c) { c.MoveNode(Direction::Up); }},
            {QStringLiteral("down"), [](auto &c) { c.MoveNode(Direction::Down); }},
            {QStringLiteral("left"), [](auto &c) { c.MoveNode(Direction::Left); }},
            {QStringLiteral("right"), [](auto &c) { c.MoveNode(Direction::Right); }},
            {QStringLiteral("copy"), [](auto &c) { c.Copy(); }},
            {QStringLiteral("cut"), [](auto &c) { c.Cut(); }},
            {QStringLiteral("paste"), [](auto &c) { c.Paste(); }},
            {QStringLiteral("delete"), [](auto &c) { c.Delete(); }},
            {QStringLiteral("attribute"), [](auto &c) { c.convertToAttribute(); }},
            {QStringLiteral("undo"), [](auto &c) { c.undo(); }},
            {QStringLiteral("redo"), [](auto &c) { c.redo(); }},
        };
        const auto found = known.find(name);
        if (found == known.end())
            return false;
        (*found)(commands);
        return true;
    }

    // The tree as one line: label, then key in brackets when asked for, then children in braces; "*" is the
    // selected node, "+" an open one.
    QString shape(bool keys = true) const { return shapeOf(model.index(0, 0), keys); }

    dom::Document document;
    tree::TreeModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::QtTest};
    PlainFace face;
    dialogs::ScriptedDialogs dialogs;
    PlainClipboard clipboard;
    tree::NodeCommands commands;
    QStringList notes;

private:
    QString shapeOf(const QModelIndex &node, bool keys) const
    {
        QString out = node.data(tree::TreeModel::LabelRole).toString();
        if (keys)
            out += u'[' + node.data(tree::TreeModel::KeyRole).toString() + u']';
        if (face.selected() == node)
            out += u'*';
        if (face.isOpen(node) && model.hasChildren(node))
            out += u'+';
        QStringList below;
        for (int row = 0; row < model.rowCount(node); ++row)
            below.append(shapeOf(model.index(row, 0, node), keys));
        return below.isEmpty() ? out : out + u'{' + below.join(u' ') + u'}';
    }
};

} // namespace tree_test
