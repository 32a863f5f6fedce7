#include "app/command_list.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace app {

namespace {

enum Column
{
    NameColumn,
    PlaceColumn,
    KeysColumn
};

constexpr int shownRows = 18;

bool movesInList(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

} // namespace

bool holdsAllWords(const QString &text, const QString &words)
{
    const QStringList wanted = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    return std::all_of(wanted.begin(), wanted.end(),
                       [&](const QString &word) { return text.contains(word, Qt::CaseInsensitive); });
}

CommandList::CommandList(QList<ListedCommand> commands, QWidget *parent)
    : QDialog(parent), commands_(std::move(commands)), words_(new QLineEdit(this)),
      list_(new QTreeWidget(this))
{
    setObjectName(QStringLiteral("frmCommands"));
    setWindowTitle(tr("Commands"));
    layOut();
    fill();
    words_->installEventFilter(this);
    connect(words_, &QLineEdit::textChanged, this, &CommandList::narrow);
    connect(words_, &QLineEdit::returnPressed, this, [this] { choose(list_->currentItem()); });
    connect(list_, &QTreeWidget::itemActivated, this, &CommandList::choose);
    narrow();
}

std::function<void()> CommandList::chosen() const { return chosen_ != nullptr ? chosen_->run : nullptr; }

void CommandList::layOut()
{
    words_->setObjectName(QStringLiteral("txtWords"));
    words_->setAccessibleName(tr("Words to look for"));
    words_->setPlaceholderText(tr("Words of a command, its menu or its key"));
    words_->setClearButtonEnabled(true);
    list_->setObjectName(QStringLiteral("lstCommands"));
    list_->setAccessibleName(tr("Commands"));
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->setHeaderLabels({tr("Command"), tr("Where"), tr("Key")});
    auto *whole = new QVBoxLayout(this);
    whole->addWidget(words_);
    whole->addWidget(list_, 1);
}

void CommandList::fill()
{
    std::stable_sort(commands_.begin(), commands_.end(), [](const ListedCommand &a, const ListedCommand &b) {
        return QString::localeAwareCompare(a.name, b.name) < 0;
    });
    for (const ListedCommand &command : std::as_const(commands_)) {
        auto *item = new QTreeWidgetItem(
            list_, {command.name, command.place, command.keys.toString(QKeySequence::NativeText)});
        item->setDisabled(!command.enabled);
    }
    for (const Column column : {NameColumn, PlaceColumn, KeysColumn})
        list_->resizeColumnToContents(column);
    const int beside
        = style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 4 * fontMetrics().averageCharWidth();
    resize(list_->header()->length() + beside, fontMetrics().lineSpacing() * (shownRows + 3) * 5 / 4);
}

// The first that can be run is chosen, so that Enter runs it.
void CommandList::narrow()
{
    QTreeWidgetItem *first = nullptr;
    for (int row = 0; row < list_->topLevelItemCount(); ++row) {
        QTreeWidgetItem *item = list_->topLevelItem(row);
        const QString whole = item->text(NameColumn) + QLatin1Char(' ') + item->text(PlaceColumn)
            + QLatin1Char(' ') + item->text(KeysColumn);
        const bool shown = holdsAllWords(whole, words_->text());
        item->setHidden(!shown);
        if (first == nullptr && shown && !item->isDisabled())
            first = item;
    }
    list_->setCurrentItem(first);
}

void CommandList::choose(const QTreeWidgetItem *item)
{
    if (item == nullptr || item->isDisabled() || item->isHidden())
        return;
    chosen_ = &commands_.at(list_->indexOfTopLevelItem(const_cast<QTreeWidgetItem *>(item)));
    accept();
}

// The arrows go through the list while one types.
bool CommandList::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == words_ && event->type() == QEvent::KeyPress
        && movesInList(static_cast<QKeyEvent *>(event)->key())) {
        QCoreApplication::sendEvent(list_, event);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace app
