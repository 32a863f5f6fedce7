// All that can be done, found by words: the commands of the menus and those of the code editor that stand in
// none.
#pragma once

#include <QDialog>
#include <QKeySequence>
#include <QList>

#include <functional>

class QLineEdit;
class QTreeWidget;
class QTreeWidgetItem;

namespace app {

class CommandSet;

// One command as the list shows it.
struct ListedCommand
{
    QString name;
    QString place; // the menus that lead to it; for one of the editor alone where it acts
    QKeySequence keys;
    bool enabled = true;
    std::function<void()> run;
};

class CommandList : public QDialog
{
    Q_OBJECT

public:
    CommandList(QList<ListedCommand> commands, QWidget *parent);

    // What was chosen; null when nothing was. To be run when the list has gone, since it may open windows
    // itself.
    std::function<void()> chosen() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void layOut();
    void fill();
    void narrow();
    void choose(const QTreeWidgetItem *item);

    QList<ListedCommand> commands_;
    QLineEdit *words_;
    QTreeWidget *list_;
    const ListedCommand *chosen_ = nullptr;
};

// Whether every word stands in the text, in any order, whatever its case.
bool holdsAllWords(const QString &text, const QString &words);

} // namespace app
