// The Attribute dialog `attpropfrm`: adds a row to the attribute list or changes its selected row. Nothing
// reaches the document from here.
#pragma once

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace tree {

class AttributeList;
struct PropertyServices;

class attpropfrm : public QDialog
{
    Q_OBJECT

public:
    // Made once for a list, and opened any number of times.
    attpropfrm(PropertyServices &services, AttributeList &list, QWidget *parent);

    // Shown modally; both return at once.
    void openToAdd();
    void openToChange(); // the list's selected row

    // Replaces the selection of the field that had the focus last.
    void insertSymbols(const QString &text);

    void accept() override; // OK; stays open when the name is there already or illegal

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void layOut();
    void start(const QString &name, const QString &value, QLineEdit *first);
    bool attrexst(const QString &name) const;
    bool isRefused();
    void refuse(QLineEdit *field, QLabel *label, const QString &reason);
    void cmdsynbols_Click();
    void rememberSelection();

    PropertyServices &services_;
    AttributeList &list_;
    QCheckBox *Check1; // never shown: checked to add, unchecked to change
    QLineEdit *txtname;
    QLineEdit *txtvalue;
    QLabel *nameReason_;
    QLabel *valueReason_;
    QPushButton *cmdsynbols;
    QPushButton *cmdOK;
    QPushButton *cmdcancel;
    QLineEdit *lastField_;
    bool touched_ = false; // by the user, since it got the focus: its selection is meant
    int selectionStart_ = -1; // of the last field when it lost the focus; -1 when none was meant
    int selectionLength_ = 0;
};

} // namespace tree
