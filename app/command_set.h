// The commands as live actions: one per row of the table, shared by its menu item and its button, so that
// both are enabled, checked and hidden together.
#pragma once

#include <QAction>
#include <QHash>
#include <QKeySequence>
#include <QObject>
#include <functional>

namespace app {

struct Command;

class CommandSet : public QObject
{
    Q_OBJECT

public:
    // Makes an action for every row that has one, named as its menu item.
    explicit CommandSet(QObject *parent);

    // The action of a control name; null when there is none, as for separators.
    QAction *action(const QString &name) const { return actions_.value(name); }
    QAction *action(const Command &row) const;

    // Says what a command does, in place of what was said before. A name that no row has is a slip in the
    // program, which ends with it: left alone it would only make an item grey.
    void bind(const char *name, const std::function<void()> &run);

    // Called before each run of a command.
    void setBeforeRun(std::function<void()> beforeRun) { beforeRun_ = std::move(beforeRun); }

    // Shows the keys of the code editor's commands; keyOf answers for a number of the editor. The editor
    // itself acts on them, before any menu could.
    void showEditorKeys(const std::function<QKeySequence(int)> &keyOf);

    // Whether the keys of what acts on the tree are there; where the tree is not shown they mean other
    // things.
    void offerTreeKeys(bool offered);

    // Fetches the pictures anew, for another palette.
    void refreshIcons();

    // Commands that nothing was bound to cannot be chosen.
    void disableUnbound();

    // The names of the commands that nothing was bound to.
    QStringList unbound() const;

private:
    QHash<QString, QAction *> actions_;
    QHash<QString, std::function<void()>> bound_;
    std::function<void()> beforeRun_;
};

} // namespace app
