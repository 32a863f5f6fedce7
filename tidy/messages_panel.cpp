#include "tidy/messages_panel.h"

#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QKeySequence>
#include <QLabel>
#include <QShortcut>
#include <QStyle>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace tidy {

namespace {

enum Column
{
    KindColumn,
    LineColumn,
    TextColumn
};

constexpr int lineRole = Qt::UserRole;
constexpr int columnRole = Qt::UserRole + 1;

struct Kind
{
    Severity severity;
    const char *name;
    QStyle::StandardPixmap picture;
};

constexpr Kind kinds[] = {
    {Severity::Error, "Error", QStyle::SP_MessageBoxCritical},
    {Severity::Warning, "Warning", QStyle::SP_MessageBoxWarning},
    {Severity::Information, "Note", QStyle::SP_MessageBoxInformation},
};

const Kind &kindOf(const Message &message)
{
    return *std::find_if(std::begin(kinds), std::end(kinds) - 1,
                         [&message](const Kind &kind) { return kind.severity == message.severity; });
}

QTreeWidgetItem *rowFor(const Message &message, const QWidget &panel)
{
    const Kind &kind = kindOf(message);
    const QString line = message.line > 0 ? QString::number(message.line) : QString();
    auto *row = new QTreeWidgetItem({QString::fromLatin1(kind.name), line, message.text});
    row->setIcon(KindColumn, panel.style()->standardIcon(kind.picture, nullptr, &panel));
    row->setTextAlignment(LineColumn, Qt::AlignRight | Qt::AlignVCenter);
    row->setData(LineColumn, lineRole, message.line);
    row->setData(LineColumn, columnRole, std::max(message.column, 1));
    row->setToolTip(TextColumn, message.text);
    return row;
}

QString noMessages() { return QStringLiteral("No messages."); }

} // namespace

QString messagesTitle() { return QStringLiteral("Tidy Messages"); }

MessagesPanel::MessagesPanel(QWidget *parent)
    : QWidget(parent), summary_(new QLabel(noMessages(), this)), list_(new QTreeWidget(this))
{
    setObjectName(QStringLiteral("MessagesPanel"));
    setWindowTitle(messagesTitle());
    summary_->setObjectName(QStringLiteral("lblsummary"));
    list_->setObjectName(QStringLiteral("lstmessages"));
    list_->setAccessibleName(messagesTitle());
    setFocusProxy(list_);
    list_->setHeaderLabels({QStringLiteral("Kind"), QStringLiteral("Line"), QStringLiteral("Message")});
    list_->setRootIsDecorated(false);
    list_->setAlternatingRowColors(true);
    list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(summary_);
    layout->addWidget(list_);
    connect(list_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem *item) { choose(item); });
    connect(list_, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *item) { choose(item); });
    auto *copyKey = new QShortcut(QKeySequence::Copy, list_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(copyKey, &QShortcut::activated, this, &MessagesPanel::copy);
}

void MessagesPanel::showMessages(const std::vector<Message> &messages, const Counts &counts)
{
    list_->clear();
    summary_->setText(messages.empty() ? noMessages() : summaryOf(counts));
    QList<QTreeWidgetItem *> rows;
    for (const Message &message : messages)
        rows << rowFor(message, *this);
    list_->addTopLevelItems(rows);
    list_->setCurrentItem(list_->topLevelItem(0));
    for (int column : {KindColumn, LineColumn, TextColumn})
        list_->resizeColumnToContents(column);
}

void MessagesPanel::choose(const QTreeWidgetItem *item)
{
    const int line = item->data(LineColumn, lineRole).toInt();
    if (line > 0)
        Q_EMIT placeChosen(line, item->data(LineColumn, columnRole).toInt());
}

// The chosen messages as they stand in the list, one a line.
void MessagesPanel::copy()
{
    QStringList lines;
    for (const QTreeWidgetItem *item : list_->selectedItems())
        lines << QStringList({item->text(KindColumn), item->text(LineColumn), item->text(TextColumn)})
                     .join(QLatin1Char('\t'));
    QApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

} // namespace tidy
