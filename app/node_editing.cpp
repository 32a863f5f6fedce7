#include "app/node_editing.h"

#include "app/command_set.h"
#include "app/commands.h"
#include "app/menus.h"
#include "document/workspace.h"
#include "editor/character_map.h"
#include "platform/control/editor_control.h"
#include "tree/node_commands.h"
#include "tree/propfrm.h"
#include "tree/tree_view.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

namespace app {

using Direction = tree::NodeCommands::Direction;
using tree::NodeCommands;

// What an insert command types into the editor, how far into it the caret goes, and how many characters are
// selected there, for the next ones typed to replace.
struct NodeEditing::Skeleton
{
    dom::NodeKind kind;
    const char *markup;
    int caretSteps;
    int selected;
};

namespace {

constexpr int startOfInsertedText = 203; // editor commands
constexpr int characterRight = 201;
constexpr int extendRight = 202;

struct Insertion
{
    const char *name;
    dom::NodeKind kind;
};

constexpr Insertion insertions[] = {
    {"mnuelement", dom::NodeKind::Element},
    {"mnutext", dom::NodeKind::Text},
    {"mnucdata", dom::NodeKind::CData},
    {"mnucomment", dom::NodeKind::Comment},
    {"mnupi", dom::NodeKind::ProcessingInstruction},
};

struct Move
{
    const char *name;
    Direction direction;
};

constexpr Move moves[] = {
    {"mnumoveup", Direction::Up},
    {"mnumovedown", Direction::Down},
    {"mnumoveleft", Direction::Left},
    {"mnumoveright", Direction::Right},
};

struct Plain
{
    const char *name;
    void (NodeCommands::*run)();
};

constexpr Plain plain[] = {
    {"mnucopytag", &NodeCommands::Copy},
    {"mnupastetag", &NodeCommands::Paste},
    {"mnudeletetag", &NodeCommands::Delete},
    {"mnucut", &NodeCommands::Cut},
    {"mnuexpand", &NodeCommands::Expand},
    {"mnucontract", &NodeCommands::Collapse},
    {"mnuconverttoattribute", &NodeCommands::convertToAttribute},
    {"mnuundotag", &NodeCommands::undo},
    {"mnuredotag", &NodeCommands::redo},
};

// What the menu at the pointer offers after its own item: commands, menus, and "-" for a separator.
constexpr const char *const alsoAtPointer[] = {"-",
                                               "mnuundotag",
                                               "mnuredotag",
                                               "-",
                                               "mnucut",
                                               "mnucopytag",
                                               "mnupastetag",
                                               "mnudeletetag",
                                               "-",
                                               "mnuinsert",
                                               "mnumovetag",
                                               "-",
                                               "mnuconverttoattribute",
                                               "-",
                                               "mnuexpand",
                                               "mnucontract",
                                               "mnutagselectedonly"};

QString text(const char *constant) { return QString::fromLatin1(constant); }

} // namespace

NodeEditing::NodeEditing(const Around &around) : around_(around)
{
    bindCommands();
    bindInsertions();
    addKeys();
    fillContextMenu();
    connectView();
    refresh();
}

void NodeEditing::bindCommands()
{
    CommandSet &commands = around_.commands;
    for (const Plain &row : plain)
        commands.bind(row.name, [this, row] { (around_.nodes.*row.run)(); });
    for (const Move &row : moves)
        commands.bind(row.name, [this, row] { around_.nodes.MoveNode(row.direction); });
    for (const char *name : {"mnueditnod", "mnueditnod4"})
        commands.bind(name, [this] { EditNode(); });
    commands.bind("mnutagselectedonly", [this] { smartSelect(); });
}

void NodeEditing::bindInsertions()
{
    for (const Insertion &row : insertions)
        around_.commands.bind(row.name, [this, row] { insert(row.kind); });
}

// Markup where the text is shown, nodes where the tree is; nothing that cannot be seen.
void NodeEditing::insert(dom::NodeKind kind)
{
    static constexpr Skeleton skeletons[] = {
        {dom::NodeKind::Element, "<Element></Element>", 9, 0},
        {dom::NodeKind::Text, "Text", 0, 4},
        {dom::NodeKind::CData, "<![CDATA[]]>", 9, 0},
        {dom::NodeKind::Comment, "<!---->", 4, 0},
        {dom::NodeKind::ProcessingInstruction,
         "<?"
         "?>",
         2, 0},
    };
    switch (around_.currentTab()) {
    case document::NormalMode:
        around_.nodes.insert(kind);
        break;
    case document::XmlMode:
        for (const Skeleton &row : skeletons)
            if (row.kind == kind)
                insertMarkup(row);
        break;
    default:
        around_.note(QStringLiteral("Nothing can be inserted into the preview"));
    }
}

void NodeEditing::insertMarkup(const Skeleton &skeleton)
{
    around_.editor.replaceSelection(skeleton.markup);
    around_.editor.execute(startOfInsertedText);
    for (int step = 0; step < skeleton.caretSteps; ++step)
        around_.editor.execute(characterRight);
    for (int step = 0; step < skeleton.selected; ++step)
        around_.editor.execute(extendRight);
    around_.editor.giveFocus();
}

// The keys act while the tree has the focus: in the other views they mean other things.
void NodeEditing::addKeys()
{
    for (const Command &row : commandTable()) {
        QAction *action = around_.commands.action(row);
        if (!action || !actsOnTree(row))
            continue;
        action->setShortcutContext(Qt::WidgetShortcut);
        around_.view.addAction(action);
    }
}

void NodeEditing::fillContextMenu()
{
    QMenu *menu = around_.menus.menu(QStringLiteral("mnueditnod1"));
    for (const char *name : alsoAtPointer) {
        if (QAction *action = around_.commands.action(text(name)))
            menu->addAction(action);
        else if (QMenu *submenu = around_.menus.menu(text(name)))
            menu->addMenu(submenu);
        else
            menu->addSeparator();
    }
}

void NodeEditing::connectView()
{
    using tree::TreeView;
    TreeView *view = &around_.view;
    QObject::connect(view, &TreeView::selectionMoved, view, [this] { refresh(); });
    QObject::connect(view, &TreeView::editRequested, view, [this] { EditNode(); });
    QObject::connect(view, &TreeView::nodeClicked, &around_.nodes, &NodeCommands::nodeClicked);
    QObject::connect(&around_.nodes, &NodeCommands::stepsChanged, view, [this] { refresh(); });
    QObject::connect(&around_.model, &QAbstractItemModel::modelReset, view, [this] { refresh(); });
    QObject::connect(&around_.nodes, &NodeCommands::noted, view, around_.note);
    QObject::connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, view, [this] { refresh(); });
    view->setDrop([this](const QModelIndex &dragged, const QModelIndex &target) {
        return around_.nodes.drop(dragged, target);
    });
}

void NodeEditing::enable(const char *name, bool enabled)
{
    around_.commands.action(text(name))->setEnabled(enabled);
}

void NodeEditing::showStep(const char *name, const QString &verb, const QString &step)
{
    enable(name, !step.isEmpty());
    around_.commands.action(text(name))->setText(step.isEmpty() ? verb : verb + QLatin1Char(' ') + step);
}

void NodeEditing::refresh()
{
    const QModelIndex selected = around_.view.currentIndex();
    const bool any = around_.model.GetNodepar(selected) != nullptr;
    // Markup can be typed whether or not the tree has a selected node; what inserting does then is nothing.
    for (const Insertion &row : insertions)
        enable(row.name, true);
    for (const Move &row : moves)
        enable(row.name, around_.nodes.canMove(row.direction));
    for (const char *name : {"mnucut", "mnucopytag", "mnudeletetag", "mnuexpand", "mnucontract"})
        enable(name, any);
    for (const char *name : {"mnueditnod", "mnueditnod4"})
        enable(name, any && tree::Propfrm::edits(selected));
    enable("mnupastetag", around_.nodes.canPaste());
    enable("mnuconverttoattribute", any && selected.parent().isValid());
    enable("mnutagselectedonly", true);
    showStep("mnuundotag", QStringLiteral("&Undo"), around_.nodes.undoName());
    showStep("mnuredotag", QStringLiteral("&Redo"), around_.nodes.redoName());
}

void NodeEditing::smartSelect()
{
    around_.nodes.setSmartSelect(around_.commands.action(QStringLiteral("mnutagselectedonly"))->isChecked());
}

void NodeEditing::EditNode()
{
    const QModelIndex selected = around_.view.currentIndex();
    if (!around_.model.GetNodepar(selected) || !tree::Propfrm::edits(selected))
        return;
    tree::PropertyServices services{
        .dialogs = around_.dialogs,
        .run = [this](const QString &name,
                      const tree::PropertyServices::Edit &edit) { return around_.nodes.edit(name, edit); },
        .showSymbols = [this](int target, QWidget *parent) { showSymbols(target, parent); },
    };
    tree::Propfrm dialog(services, around_.document, around_.model, selected, around_.view.window());
    dialog.exec();
}

void NodeEditing::showSymbols(int target, QWidget *parent)
{
    editor::frmCharacterMap map(parent, [target, parent](const QString &symbols) {
        if (tree::Propfrm *dialog = tree::Propfrm::around(parent))
            dialog->insertSymbols(target, symbols);
    });
    map.exec();
}

} // namespace app
