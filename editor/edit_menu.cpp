#include "editor/edit_menu.h"

#include "platform/control/code_editor.h"
#include "platform/dialogs/theme_icon.h"

#include <QAction>
#include <QMenu>
#include <array>

namespace editor {

namespace {

using control::CodeEditor;

constexpr int selectAllCommand = 137;
constexpr int deleteCommand = 195;

struct Row
{
    const char *caption; // empty for a separator
    const char *icon;
    void (*run)(CodeEditor &);
    bool (*enabled)(const CodeEditor &);
};

constexpr std::array rows = {
    Row{"&Undo", "edit-undo", [](CodeEditor &e) { e.undo(); },
        [](const CodeEditor &e) { return e.canUndo(); }},
    Row{"&Redo", "edit-redo", [](CodeEditor &e) { e.redo(); },
        [](const CodeEditor &e) { return e.canRedo(); }},
    Row{"", "", nullptr, nullptr},
    Row{"Cu&t", "edit-cut", [](CodeEditor &e) { e.cut(); }, [](const CodeEditor &e) { return e.canCut(); }},
    Row{"&Copy", "edit-copy", [](CodeEditor &e) { e.copy(); },
        [](const CodeEditor &e) { return e.canCopy(); }},
    Row{"&Paste", "edit-paste", [](CodeEditor &e) { e.paste(); },
        [](const CodeEditor &e) { return e.canPaste(); }},
    Row{"&Delete", "edit-delete", [](CodeEditor &e) { e.execute(deleteCommand); },
        [](const CodeEditor &e) { return e.canCut(); }},
    Row{"", "", nullptr, nullptr},
    Row{"Select &All", "edit-select-all", [](CodeEditor &e) { e.execute(selectAllCommand); },
        [](const CodeEditor &) { return true; }},
};

void addRow(QMenu &menu, const Row &row, CodeEditor &editor)
{
    if (row.run == nullptr) {
        menu.addSeparator();
        return;
    }
    QAction *action = menu.addAction(dialogs::themeIcon(QLatin1String(row.icon)), QLatin1String(row.caption));
    action->setEnabled(row.enabled(editor));
    QObject::connect(action, &QAction::triggered, &editor, [&editor, run = row.run] { run(editor); });
}

void popUp(CodeEditor &editor, const QPoint &at)
{
    auto *menu = new QMenu(&editor);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Row &row : rows)
        addRow(*menu, row, editor);
    menu->popup(at);
}

} // namespace

void giveEditMenu(CodeEditor &editor)
{
    QObject::connect(&editor, &CodeEditor::contextMenuRequested, &editor,
                     [&editor](const QPoint &at) { popUp(editor, at); });
}

} // namespace editor
