// The Node Properties dialog `Propfrm`: an element's name and attributes, an instruction's target and data,
// or the text of a comment, CDATA section or text node. Nothing reaches the document before OK.
#pragma once

#include "tree/properties.h"

#include <QDialog>
#include <QPersistentModelIndex>
#include <functional>

class QPushButton;
class QStackedWidget;
class QStatusBar;

namespace dialogs {
class Dialogs;
}

namespace tree {

class attpropfrm;
class PropertiesPage;
class TreeModel;

// What the dialog is given from outside. All of it outlives the dialog.
struct PropertyServices
{
    using Edit = std::function<platform::Result<void>()>;

    dialogs::Dialogs &dialogs;
    // Runs everything that one OK does to the document as one undoable command of that name; takes it back
    // whole when edit fails, and returns the failure. When empty, the document alone sees to that.
    std::function<platform::Result<void>(const QString &name, const Edit &edit)> run;
    // Shows the character map modally over parent. Its text goes to Propfrm::around(parent)->insertSymbols.
    // When empty, "Symbols..." is disabled.
    std::function<void(int target, QWidget *parent)> showSymbols;
    // The symbol-target code: 0 the Attribute dialog, 1 txtdata, 2 comentbox, 3 cdatbox, 4 textbx.
    int symbolTarget = 0;
};

class Propfrm : public QDialog
{
    Q_OBJECT

public:
    // Whether there is anything to edit: the node is an element, instruction, comment, CDATA or text.
    static bool edits(const QModelIndex &node);

    // node is one of model's that edits() takes; model shows document. Run it with exec().
    Propfrm(PropertyServices &services, dom::Document &document, TreeModel &model, const QModelIndex &node,
            QWidget *parent = nullptr);

    // The dialog that a widget belongs to, at any depth; null when none.
    static Propfrm *around(QWidget *inside);

    // Replaces the selection of the box that the code names; other codes, and a box that is not open,
    // receive nothing. The element page has no box: there the name does, unless the Attribute dialog is open.
    void insertSymbols(int target, const QString &text);

    void accept() override; // OK; stays open when the document refuses

protected:
    bool event(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void addButtons();
    void addKeys();
    void openAttributes();
    void lodinfo();
    void selectPlaceholder();
    void cmdsynbols_Click();
    platform::Result<void> apply(dom::Node *node, const NodeProperties &properties);
    void refuse(QWidget *field, const QString &reason);

    PropertyServices &services_;
    dom::Document &document_;
    TreeModel &model_;
    QPersistentModelIndex node_;
    QStackedWidget *pages_;
    PropertiesPage *page_ = nullptr; // the one that is shown
    attpropfrm *attribute_ = nullptr; // element page only
    QStatusBar *status_;
    bool filled_ = false;
};

} // namespace tree
