// Quick Tags: the catalogue as a list that can be searched, beside the window that it inserts into.
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace editor {

struct QuickTagTarget;

class qiktagfrm : public QDialog
{
    Q_OBJECT

public:
    // Stands over parent without blocking it, and is deleted when it is closed. target outlives the dialog.
    qiktagfrm(QuickTagTarget &target, QWidget *parent);

    // The target shows another tab. Also noticed when the dialog is activated or inserts.
    void modeChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    void layOut();
    void connectControls();
    void fill();
    void narrow();
    void insert();
    void addtotree(int entry);
    void addtotxt(int entry);
    void showState();
    void placeBesideOwner();
    int currentEntry() const; // -1 when none is selected
    void select(int entry);
    void selectFirstFor(const QFocusEvent &event);

    QuickTagTarget &target_;
    int tab_;
    bool placed_ = false;
    QLineEdit *txtSearch;
    QListWidget *List1;
    QLabel *lblState;
    QPushButton *OKButton;
    QPushButton *CancelButton;
};

} // namespace editor
