#include "tidy/options_search.h"

#include "platform/dialogs/dialogs.h"
#include "platform/dialogs/theme_icon.h"
#include "tidy/option_catalogue.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QToolButton>

namespace tidy {

namespace {

constexpr int shownResults = 5;

} // namespace

QList<int> optionsDescribedBy(const QString &text)
{
    QList<int> found;
    for (int index = 0; index < int(optionCatalogue().size()); ++index) {
        if (index != sentinelOption
            && optionCatalogue()[size_t(index)].descriptionText().contains(text, Qt::CaseInsensitive))
            found << index;
    }
    return found;
}

OptionsSearch::OptionsSearch(dialogs::Dialogs &dialogs, QWidget *parent)
    : QWidget(parent), dialogs_(dialogs), txtfind(new QLineEdit(this)), cmdfind(new QToolButton(this)),
      lstfound(new QListWidget(this))
{
    setObjectName(QStringLiteral("frasearch"));
    txtfind->setObjectName(QStringLiteral("txtfind"));
    cmdfind->setObjectName(QStringLiteral("cmdfind"));
    lstfound->setObjectName(QStringLiteral("lstfound"));
    lstfound->setAccessibleName(QStringLiteral("Found options"));
    cmdfind->setIcon(dialogs::themeIcon(QStringLiteral("edit-find")));
    cmdfind->setToolTip(QStringLiteral("Click here to search"));
    cmdfind->setAccessibleName(QStringLiteral("Search"));
    cmdfind->setEnabled(false);
    auto *caption = new QLabel(QStringLiteral("Find What:"), this);
    caption->setBuddy(txtfind);
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(caption, 0, 0);
    grid->addWidget(txtfind, 0, 1);
    grid->addWidget(cmdfind, 0, 2);
    grid->addWidget(lstfound, 1, 0, 1, 3);
    lstfound->setFixedHeight(shownResults * (fontMetrics().lineSpacing() + 4) + 2 * lstfound->frameWidth());
    connect(txtfind, &QLineEdit::textChanged, this,
            [this](const QString &text) { cmdfind->setEnabled(!text.isEmpty()); });
    connect(cmdfind, &QToolButton::clicked, this, &OptionsSearch::search);
    connect(lstfound, &QListWidget::itemClicked, this, &OptionsSearch::choose);
}

void OptionsSearch::start()
{
    txtfind->setFocus();
    txtfind->selectAll();
}

void OptionsSearch::search()
{
    lstfound->clear();
    for (int index : optionsDescribedBy(txtfind->text()))
        lstfound->addItem(optionCatalogue()[size_t(index)].nameText());
    if (lstfound->count() == 0)
        dialogs_.message(dialogs::Icon::Exclamation, dialogs::Buttons::Ok,
                         QStringLiteral("Search text is not found!"));
}

void OptionsSearch::choose()
{
    if (const QListWidgetItem *item = lstfound->currentItem())
        Q_EMIT optionChosen(item->text());
}

// Enter never reaches the dialog's own buttons from here.
void OptionsSearch::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return QWidget::keyPressEvent(event);
    if (lstfound->hasFocus())
        choose();
    else if (cmdfind->isEnabled())
        search();
}

} // namespace tidy
