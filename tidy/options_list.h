// The options of one tab with their values.
#pragma once

#include "tidy/option_catalogue.h"

#include <QTreeWidget>

namespace tidy {

class OptionValues;

class OptionsList : public QTreeWidget
{
    Q_OBJECT

public:
    OptionsList(const TabRange &range, const OptionValues &values, QWidget *parent);

    // Shows the values anew; a value other than the built-in default stands in bold with a mark beside it.
    void refresh();
    void refresh(int index);

    // The selected option; -1 when none is.
    int selected() const;

    // Selects and scrolls to the row of that key; where this list has none nothing is selected and false
    // comes back.
    bool select(const QString &key);

Q_SIGNALS:
    void optionSelected(int index);
    void editRequested();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void show(QTreeWidgetItem &row);

    const OptionValues &values_;
};

} // namespace tidy
