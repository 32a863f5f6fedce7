// The commands on the tree's nodes, as menus, buttons and keys offer them.
#pragma once

#include "platform/dialogs/dialogs.h"
#include "platform/dom/node_kind.h"
#include "platform/result.h"

#include <QByteArray>
#include <QString>
#include <functional>

class QWidget;

namespace control {
class EditorControl;
}
namespace dom {
class Document;
}
namespace tree {
class NodeCommands;
class TreeModel;
class TreeView;
} // namespace tree

namespace app {

class CommandSet;
class Menus;

class NodeEditing
{
public:
    // All of it outlives this, but for the note, which is only called in answer to a command.
    struct Around
    {
        tree::NodeCommands &nodes;
        tree::TreeModel &model;
        dom::Document &document;
        tree::TreeView &view;
        control::EditorControl &editor;
        dialogs::Dialogs &dialogs;
        CommandSet &commands;
        const Menus &menus;
        std::function<int()> currentTab;
        std::function<void(const QString &)> note;
    };

    explicit NodeEditing(const Around &around);

    // Enables what can be done with the selected node.
    void refresh();

    void EditNode(); // its properties, in a dialog

private:
    struct Skeleton;

    void bindCommands();
    void bindInsertions();
    void addKeys();
    void fillContextMenu();
    void connectView();
    void insert(dom::NodeKind kind);
    void insertMarkup(const Skeleton &skeleton);
    void smartSelect();
    void showSymbols(int target, QWidget *parent);
    void enable(const char *name, bool enabled);
    void showStep(const char *name, const QString &verb, const QString &step);

    Around around_;
};

} // namespace app
