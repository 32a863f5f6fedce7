// The panel "Tidy Messages": what the last run of Tidy, or the last transformation, said.
#pragma once

#include "tidy/tidy_messages.h"

#include <QWidget>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

namespace tidy {

// The panel's title, and that of the menu item that shows it.
QString messagesTitle();

class MessagesPanel : public QWidget
{
    Q_OBJECT

public:
    // To be put into a dock or shown by itself.
    explicit MessagesPanel(QWidget *parent = nullptr);

    // Takes the place of what was shown before. There may be more faults than messages.
    void showMessages(const std::vector<Message> &messages, const Counts &counts);
    void showMessages(const std::vector<Message> &messages) { showMessages(messages, countsOf(messages)); }

Q_SIGNALS:
    // A message that has a place was clicked, or chosen with Enter; both are counted from 1.
    void placeChosen(int line, int column);

private:
    void choose(const QTreeWidgetItem *item);
    void copy();

    QLabel *summary_;
    QTreeWidget *list_;
};

} // namespace tidy
