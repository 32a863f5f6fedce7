#include "app/toolbars.h"

#include "app/command_set.h"
#include "app/commands.h"

#include <QStyle>
#include <QToolBar>

#include <algorithm>
#include <cstring>
#include <vector>

namespace app {

namespace {

std::vector<const Command *> buttonsOf(const char *toolbar)
{
    std::vector<const Command *> rows;
    for (const Command &row : commandTable()) {
        if (std::strcmp(row.toolbar, toolbar) == 0)
            rows.push_back(&row);
    }
    std::sort(rows.begin(), rows.end(), [](auto *a, auto *b) { return a->place < b->place; });
    return rows;
}

void addButton(QToolBar &bar, const Command &row, QAction &action)
{
    bar.addAction(&action);
    QWidget *button = bar.widgetForAction(&action);
    button->setObjectName(QString::fromLatin1(row.key));
    button->setProperty("key", button->objectName());
}

// Pictures that go with the letters beside them, in sizes that they are drawn in.
int iconSide(const QToolBar &bar)
{
    const int wanted = bar.fontMetrics().lineSpacing() * 8 / 5;
    const int drawn = wanted >= 44 ? 44 : wanted >= 32 ? 32 : 0;
    return std::max(drawn, bar.style()->pixelMetric(QStyle::PM_ToolBarIconSize, nullptr, &bar));
}

} // namespace

QToolBar *makeToolBar(const char *name, const QString &title, const CommandSet &commands, QWidget *parent)
{
    auto *bar = new QToolBar(title, parent);
    bar->setObjectName(QString::fromLatin1(name));
    bar->setMovable(false);
    bar->setIconSize(QSize(iconSide(*bar), iconSide(*bar)));
    int group = 0;
    for (const Command *row : buttonsOf(name)) {
        if (group != 0 && row->place / 10 != group)
            bar->addSeparator();
        group = row->place / 10;
        addButton(*bar, *row, *commands.action(*row));
    }
    return bar;
}

} // namespace app
