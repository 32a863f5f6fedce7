// The search panel of the options dialog: finds options by what their descriptions say.
#pragma once

#include <QWidget>

class QLineEdit;
class QListWidget;
class QToolButton;

namespace dialogs {
class Dialogs;
}

namespace tidy {

// The indexes (without the sentinel) whose description holds the text, in any case.
QList<int> optionsDescribedBy(const QString &text);

class OptionsSearch : public QWidget
{
    Q_OBJECT

public:
    OptionsSearch(dialogs::Dialogs &dialogs, QWidget *parent);

    // Puts the caret into the search box.
    void start();

Q_SIGNALS:
    // A result was clicked, or chosen with Enter.
    void optionChosen(const QString &name);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void search();
    void choose();

    dialogs::Dialogs &dialogs_;
    QLineEdit *txtfind;
    QToolButton *cmdfind;
    QListWidget *lstfound;
};

} // namespace tidy
