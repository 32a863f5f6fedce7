// Find and Replace: a bar that stands under an editor and stays open while the user goes on working.
#pragma once

#include "editor/find_session.h"
#include "editor/match_count.h"
#include "editor/match_marks.h"
#include "editor/replace_all.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QToolButton;

namespace editor {

class FindMemory;

class FindBar : public QWidget
{
    Q_OBJECT

public:
    // Hidden at first. To be put below the editor by the caller; needs FindServices for the same editor.
    // Editor and memory outlive it.
    FindBar(control::CodeEditor &editor, FindMemory &memory, QWidget *parent);

    // Shows the bar, with what replaces when replacing. A selection in one line is what is searched for, a
    // longer one is where.
    void open(bool replacing);
    // Hides the bar; the editor gets the focus, with its selection.
    void close();
    // Goes to the next match of what was searched for last, whether the bar is open or not. Opens it when
    // nothing was. False when there is no match.
    bool find(Direction direction);

Q_SIGNALS:
    // What there is to tell while the bar is hidden, for the status bar.
    void noted(const QString &sentence);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void makeControls();
    void layOut();
    void connectControls();
    QWidget *optionsRow();
    void dress();
    void setRefused(bool refused);
    void takeSelection();
    void takeMemory();
    control::SearchPattern asked() const;
    void applyPattern();
    void patternEdited();
    void limitToSelection(bool limited);
    void showScope();
    void searchAgain();
    void remember();
    void replaceOne();
    void startReplaceAll();
    void replaceAllFinished(ReplaceAll::Outcome outcome, qsizetype count);
    bool canReplace();
    control::ReplacementText replacement() const;
    void setRunning(bool running);
    void tell(const QString &sentence, bool refused = false);
    void tell(Finding finding);
    void showCount();
    bool closesFromText(const QEvent &event) const;
    bool keyInField(const QKeyEvent &event, bool inReplacement);
    int serviceOf(const QKeyEvent &event) const;

    control::CodeEditor &editor_;
    FindMemory &memory_;
    FindSession session_;
    MatchMarks marks_;
    MatchCount count_;
    ReplaceAll replaceAll_;
    qsizetype origin_ = 0; // where searching while typing begins

    QLabel *lblFind;
    QComboBox *cboFind;
    QToolButton *cmdPrevious;
    QToolButton *cmdNext;
    QLabel *lblCount;
    QToolButton *cmdClose = nullptr;
    QLabel *lblReplace;
    QComboBox *cboReplace;
    QPushButton *cmdReplace;
    QPushButton *cmdReplaceAll;
    QCheckBox *chkMatchCase;
    QCheckBox *chkWholeWord;
    QCheckBox *chkExpression;
    QCheckBox *chkInSelection;
    QLabel *lblNotice;
    QPushButton *cmdCancel;
};

} // namespace editor
