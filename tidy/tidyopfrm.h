// The Convert and Tidy Options dialog: every option with its value and its description, found, changed one at
// a time, and saved or dropped as a whole.
#pragma once

#include "tidy/option_values.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QPushButton;
class QTabWidget;
class QTextEdit;

namespace dialogs {
class Dialogs;
}

namespace tidy {

class OptionsEditor;
class OptionsList;
class OptionsSearch;
struct TabRange;
enum class OptionTab;

class tidyopfrm : public QDialog
{
    Q_OBJECT

public:
    // Modal to parent; made anew for every opening, so that it shows what the file holds. dialogs outlives
    // it.
    tidyopfrm(const QString &programFolder, dialogs::Dialogs &dialogs, QWidget *parent);

    // OK: saves and closes. Stays open when the file cannot be written, with a line that says why.
    void accept() override;

    // Selects an option on a tab by its key, shows its description and gives its list the focus.
    void selitm(OptionTab tab, const QString &key);

protected:
    void showEvent(QShowEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void layOut();
    void addTab(const TabRange &range);
    void connectControls();
    OptionsList *currentList() const;
    void selectFirst();
    void describe(int index);
    void editOption();
    void showApplied(int index, const QString &value);
    void loadDefault();
    void showSearch(bool shown);
    void chooseResult(const QString &name);
    void fail(const QString &reason);

    const QString programFolder_;
    OptionValues values_;
    int openedHeight_ = 0; // pixels; remembered for "Show search"
    QTabWidget *SSTab1;
    QTextEdit *txtdescription;
    OptionsEditor *editor_;
    OptionsSearch *search_;
    QCheckBox *chksearch;
    QLabel *lblfailure;
    QPushButton *cmddefault;
    QPushButton *OKButton;
    QPushButton *CancelButton;
    QList<OptionsList *> lists_; // in the order of the tabs
};

} // namespace tidy
