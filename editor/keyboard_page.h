// The page of the keys: every command of the editor with what runs it.
#pragma once

#include "editor/properties_page.h"

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace editor {

class KeysEdit;

class KeyboardPage : public PropertiesPage
{
    Q_OBJECT

public:
    // Keys of the owner's menus are told when they are chosen for the text; it may be null.
    KeyboardPage(EditorDraft &draft, const QWidget *owner, QWidget *parent);

    void showDraft() override;
    void restoreDefaults() override;
    // Keys that were recorded for a command and not assigned yet.
    bool hasPending() const override;
    void takePending() override;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QPushButton *button(const char *name, const QString &caption, void (KeyboardPage::*does)());
    void nameControls();
    void layOut();
    void connectControls();
    void fill();
    void narrow();
    void showCommand();
    void chooseCommand(const QTreeWidgetItem *left);
    void showState();
    void assign();
    void clear();
    void reset();
    void change(const QList<QKeySequence> &keys, const QString &note);
    QString menuText(const QKeySequence &keys) const;
    int current() const; // 0 for none

    const QWidget *owner_;
    QLineEdit *search_;
    QTreeWidget *commands_;
    KeysEdit *keys_;
    QPushButton *assign_;
    QPushButton *clear_;
    QPushButton *reset_;
    QPushButton *resetAll_;
    QLabel *state_;
};

} // namespace editor
