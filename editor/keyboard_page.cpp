#include "editor/keyboard_page.h"

#include "editor/key_assignment.h"
#include "editor/keys_edit.h"
#include "platform/control/editor_commands.h"
#include "platform/dialogs/theme_icon.h"

#include <QAction>
#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace editor {

namespace {

enum Column
{
    NameColumn,
    KeysColumn
};

constexpr int commandRole = Qt::UserRole; // the command's number
constexpr int stateLines = 3;

bool movesInList(int key)
{
    return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}

bool isReturn(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace

KeyboardPage::KeyboardPage(EditorDraft &draft, const QWidget *owner, QWidget *parent)
    : PropertiesPage(draft, parent), owner_(owner), search_(new QLineEdit(this)),
      commands_(new QTreeWidget(this)), keys_(new KeysEdit(this)),
      assign_(button("cmdAssign", tr("Assi&gn"), &KeyboardPage::assign)),
      clear_(button("cmdClear", tr("Cl&ear"), &KeyboardPage::clear)),
      reset_(button("cmdReset", tr("&Reset"), &KeyboardPage::reset)),
      resetAll_(button("cmdResetAll", tr("Re&set All"), &KeyboardPage::restoreDefaults)),
      state_(new QLabel(this))
{
    nameControls();
    layOut();
    fill();
    connectControls();
    commands_->setCurrentItem(commands_->topLevelItem(0));
}

QPushButton *KeyboardPage::button(const char *name, const QString &caption, void (KeyboardPage::*does)())
{
    auto *made = new QPushButton(caption, this);
    made->setObjectName(QString::fromLatin1(name));
    connect(made, &QPushButton::clicked, this, does);
    return made;
}

void KeyboardPage::nameControls()
{
    search_->setObjectName(QStringLiteral("txtSearch"));
    search_->setClearButtonEnabled(true);
    search_->addAction(dialogs::themeIcon(QStringLiteral("edit-find")), QLineEdit::LeadingPosition);
    search_->setPlaceholderText(tr("Name or key"));
    commands_->setObjectName(QStringLiteral("lstCommands"));
    commands_->setAccessibleName(tr("Commands"));
    commands_->setRootIsDecorated(false);
    commands_->setUniformRowHeights(true);
    commands_->setAllColumnsShowFocus(true);
    commands_->setHeaderLabels({tr("Command"), tr("Keys")});
    keys_->setObjectName(QStringLiteral("txtKeys"));
    keys_->setAccessibleDescription(tr("Records one or two keys. Tab goes on."));
    state_->setObjectName(QStringLiteral("lblState"));
    state_->setWordWrap(true);
    state_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    state_->setMinimumHeight(stateLines * fontMetrics().lineSpacing());
}

void KeyboardPage::layOut()
{
    const auto label = [this](const QString &text, QWidget *buddy) {
        auto *made = new QLabel(text, this);
        made->setBuddy(buddy);
        return made;
    };
    auto *search = new QHBoxLayout;
    search->addWidget(label(tr("Searc&h:"), search_));
    search->addWidget(search_, 1);
    auto *choice = new QHBoxLayout;
    choice->addWidget(label(tr("Shortcu&t:"), keys_));
    choice->addWidget(keys_, 1);
    for (QPushButton *each : {assign_, clear_, reset_, resetAll_})
        choice->addWidget(each);
    auto *hint
        = new QLabel(tr("Press one key, or two in a row, in the field above. Tab goes on to the buttons, "
                        "Return assigns; to record Tab, Esc or Return itself, press Space first."),
                     this);
    hint->setWordWrap(true);

    auto *whole = new QVBoxLayout(this);
    whole->addLayout(search);
    whole->addWidget(label(tr("Co&mmands:"), commands_));
    whole->addWidget(commands_, 1);
    whole->addLayout(choice);
    whole->addWidget(hint);
    whole->addWidget(state_);
}

void KeyboardPage::connectControls()
{
    search_->installEventFilter(this);
    commands_->installEventFilter(this);
    connect(search_, &QLineEdit::textChanged, this, &KeyboardPage::narrow);
    connect(commands_, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem *, const QTreeWidgetItem *left) { chooseCommand(left); });
    connect(commands_, &QTreeWidget::itemDoubleClicked, keys_, [this] { keys_->setFocus(); });
    connect(keys_, &KeysEdit::recorded, this, &KeyboardPage::showState);
    connect(keys_, &KeysEdit::recorded, this, &KeyboardPage::changed);
    connect(keys_, &KeysEdit::assignRequested, this, &KeyboardPage::assign);
    connect(keys_, &KeysEdit::refused, this, [this] {
        state_->setText(tr("A key that types a character, or is unknown here, cannot begin a shortcut."));
    });
}

void KeyboardPage::fill()
{
    for (const control::EditorCommand &command : control::editorCommands()) {
        auto *item = new QTreeWidgetItem(commands_, {tr(command.name)});
        item->setData(NameColumn, commandRole, command.number);
        item->setText(KeysColumn, keysText(draft_.shortcuts, command.number));
    }
    commands_->header()->setSectionResizeMode(NameColumn, QHeaderView::ResizeToContents);
}

int KeyboardPage::current() const
{
    const QTreeWidgetItem *item = commands_->currentItem();
    return item == nullptr || item->isHidden() ? 0 : item->data(NameColumn, commandRole).toInt();
}

void KeyboardPage::showDraft()
{
    for (int row = 0; row < commands_->topLevelItemCount(); ++row) {
        QTreeWidgetItem *item = commands_->topLevelItem(row);
        item->setText(KeysColumn, keysText(draft_.shortcuts, item->data(NameColumn, commandRole).toInt()));
    }
    narrow();
    showCommand();
}

// Shows the commands of which the name or a key contains what is searched for.
void KeyboardPage::narrow()
{
    const QString wanted = search_->text().trimmed();
    QTreeWidgetItem *first = nullptr;
    for (int row = 0; row < commands_->topLevelItemCount(); ++row) {
        QTreeWidgetItem *item = commands_->topLevelItem(row);
        const bool shown = item->text(NameColumn).contains(wanted, Qt::CaseInsensitive)
            || item->text(KeysColumn).contains(wanted, Qt::CaseInsensitive);
        item->setHidden(!shown);
        first = first == nullptr && shown ? item : first;
    }
    if (current() == 0 || commands_->currentItem() == nullptr)
        commands_->setCurrentItem(first);
}

void KeyboardPage::showCommand()
{
    keys_->setKeys(draft_.shortcuts.shortcuts(current()).value(0));
    showState();
}

// Keys that were recorded for one command are not meant for another, and do not go unnoticed.
void KeyboardPage::chooseCommand(const QTreeWidgetItem *left)
{
    const bool pending = left != nullptr && hasPending();
    const QString keys = keys_->keys().toString(QKeySequence::NativeText);
    showCommand();
    if (!pending)
        return;
    state_->setText(tr("%1 was not assigned to %2.").arg(keys, left->text(NameColumn)));
    Q_EMIT changed();
}

bool KeyboardPage::hasPending() const { return assign_->isEnabled(); }

void KeyboardPage::takePending() { assign(); }

// What assigning the keys in the field would do.
void KeyboardPage::showState()
{
    const QList<QKeySequence> own = draft_.shortcuts.shortcuts(current());
    const QKeySequence keys = keys_->keys();
    const bool fresh = current() != 0 && !keys.isEmpty() && own.value(0) != keys;
    const bool chosen = current() != 0;
    keys_->setEnabled(chosen);
    assign_->setEnabled(fresh);
    clear_->setEnabled(!own.isEmpty());
    reset_->setEnabled(chosen && own != firstShortcuts().shortcuts(current()));
    QStringList told;
    if (!chosen)
        told.append(tr("No command matches the search."));
    const QList<KeyConflict> conflicts = keyConflicts(draft_.shortcuts, current(), keys);
    if (fresh && !conflicts.isEmpty())
        told.append(tr("%1 Assigning takes it from there.").arg(conflictText(conflicts)));
    if (fresh && own.size() > 1)
        told.append(tr("The other keys of this command go away."));
    if (fresh)
        told.append(menuText(keys));
    state_->setText(told.join(u' ').trimmed());
}

// The editor takes its keys before the menus do.
QString KeyboardPage::menuText(const QKeySequence &keys) const
{
    if (owner_ == nullptr || keys.isEmpty())
        return {};
    for (const QAction *action : owner_->findChildren<QAction *>()) {
        const QString caption = action->text().remove(u'&').trimmed();
        if (action->shortcuts().contains(QKeySequence(keys[0])) && !caption.isEmpty())
            return tr("While the text has the focus, %1 no longer runs %2 of the menus.")
                .arg(QKeySequence(keys[0]).toString(QKeySequence::NativeText), caption);
    }
    return {};
}

void KeyboardPage::assign()
{
    if (!assign_->isEnabled())
        return;
    const QKeySequence keys = keys_->keys();
    change({keys}, takenText(keyConflicts(draft_.shortcuts, current(), keys)));
}

void KeyboardPage::clear() { change({}, {}); }

void KeyboardPage::reset()
{
    const QList<QKeySequence> first = firstShortcuts().shortcuts(current());
    QList<KeyConflict> lost;
    for (const QKeySequence &keys : first)
        lost += keyConflicts(draft_.shortcuts, current(), keys);
    change(first, takenText(lost));
}

void KeyboardPage::change(const QList<QKeySequence> &keys, const QString &note)
{
    assignKeys(draft_.shortcuts, current(), keys);
    showDraft();
    state_->setText(note);
    Q_EMIT changed();
}

void KeyboardPage::restoreDefaults()
{
    draft_.shortcuts = firstShortcuts();
    showDraft();
    Q_EMIT changed();
}

// Arrows in the search field move in the list; Return goes on to the field below, not to OK.
bool KeyboardPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return PropertiesPage::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (watched == search_ && movesInList(key->key())) {
        QCoreApplication::sendEvent(commands_, event);
        return true;
    }
    if (isReturn(*key)) {
        keys_->setFocus();
        return true;
    }
    return PropertiesPage::eventFilter(watched, event);
}

} // namespace editor
