// The code boxes of the Node Properties dialog: the code editor with the keys and the menu that suit a
// dialog.
#pragma once

#include <QString>

class QWidget;

namespace control {
class CodeEditor;
}

namespace tree {

// Escape, Ctrl+Enter and Ctrl+Tab are left to the dialog.
control::CodeEditor *makeBox(const QString &name, const QString &accessibleName, QWidget *parent);

// A node's data in and out. New lines are line feeds, whatever other line ends the data has.
void loadData(control::CodeEditor &box, const QString &data);
QString dataOf(const control::CodeEditor &box);

} // namespace tree
