#include "tree/properties_box.h"

#include "platform/control/code_editor.h"
#include "platform/dom/characters.h"

#include <QMenu>

namespace tree {

namespace {

using control::CodeEditor;

// Commands of the editor, by their numbers.
constexpr int cancelSelection = 140; // has Escape
constexpr int openLineBelow = 123; // has Ctrl+Enter

// The box's context menu; a row without a command is a separator.
struct MenuRow
{
    const char *caption;
    int command;
    bool (CodeEditor::*enabled)() const;
};

constexpr MenuRow menuRows[] = {
    {"&Undo", 100, &CodeEditor::canUndo},
    {"&Redo", 101, &CodeEditor::canRedo},
    {"", 0, nullptr},
    {"Cu&t", 102, &CodeEditor::canCut},
    {"&Copy", 103, &CodeEditor::canCopy},
    {"&Paste", 104, &CodeEditor::canPaste},
    {"&Delete", 195, &CodeEditor::canCut},
    {"", 0, nullptr},
    {"Select &All", 137, nullptr},
};

void showMenu(CodeEditor &box, const QPoint &where)
{
    QMenu menu(&box);
    for (const MenuRow &row : menuRows) {
        if (row.command == 0) {
            menu.addSeparator();
            continue;
        }
        QAction *action = menu.addAction(QLatin1String(row.caption));
        action->setEnabled(!row.enabled || (box.*row.enabled)());
        QObject::connect(action, &QAction::triggered, &box, [&box, &row] { box.execute(row.command); });
    }
    menu.exec(where);
}

} // namespace

CodeEditor *makeBox(const QString &name, const QString &accessibleName, QWidget *parent)
{
    auto *box = new CodeEditor(parent);
    box->setObjectName(name);
    box->setAccessibleName(accessibleName);
    box->setFrameShape(QFrame::StyledPanel);
    control::EditorProperties plain = box->properties();
    plain.lineNumbering = false;
    plain.leftMargin = false;
    // What is typed is the value, and nothing is typed along: no indent with Enter, no closing tag.
    plain.autoIndent = plain.closeOnSlash = plain.closeOnBracket = plain.renameBoth = false;
    box->setProperties(plain);
    for (const int command : {cancelSelection, openLineBelow})
        box->shortcuts().setShortcuts(command, {});
    QObject::connect(box, &CodeEditor::contextMenuRequested, box,
                     [box](const QPoint &where) { showMenu(*box, where); });
    return box;
}

void loadData(CodeEditor &box, const QString &data)
{
    const QByteArray utf8 = data.toUtf8();
    if (!utf8.contains('\r')) {
        box.loadText(utf8);
        return;
    }
    // The editor goes on as the first line ends; so it gets to see a line feed first.
    box.loadText("\n");
    box.replaceRange({0, 1}, utf8);
    box.send(QsciScintillaBase::SCI_EMPTYUNDOBUFFER);
    box.placeCaret(0, 0);
}

QString dataOf(const CodeEditor &box) { return dom::textOf(box.text()); }

} // namespace tree
