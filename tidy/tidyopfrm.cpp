#include "tidy/tidyopfrm.h"

#include "platform/dialogs/window_size.h"
#include "tidy/option_catalogue.h"
#include "tidy/options_editor.h"
#include "tidy/options_list.h"
#include "tidy/options_search.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QShowEvent>
#include <QTabWidget>
#include <QTextEdit>
#include <QVBoxLayout>

#include <algorithm>

namespace tidy {

namespace {

constexpr int usualColumns = 112;
constexpr int usualLines = 29;
constexpr int searchGap = 7; // pixels: 100 twips
constexpr int descriptionLines = 6;
constexpr int fewestDescriptionLines = 2; // where the screen has no room for more

constexpr OptionTab tabOrder[] = {OptionTab::Markup,   OptionTab::Layout,        OptionTab::Encoding,
                                  OptionTab::Warnings, OptionTab::Miscellaneous, OptionTab::Other};

const TabRange &rangeOf(OptionTab tab)
{
    const auto ranges = tabRanges();
    return *std::find_if(ranges.begin(), ranges.end() - 1,
                         [tab](const TabRange &range) { return range.tab == tab; });
}

int positionOf(OptionTab tab)
{
    return int(std::find(std::begin(tabOrder), std::end(tabOrder) - 1, tab) - std::begin(tabOrder));
}

QPushButton *button(const char *name, const char *caption, QWidget *parent)
{
    auto *made = new QPushButton(QString::fromLatin1(caption), parent);
    made->setObjectName(QString::fromLatin1(name));
    made->setAutoDefault(false);
    return made;
}

} // namespace

tidyopfrm::tidyopfrm(const QString &programFolder, dialogs::Dialogs &dialogs, QWidget *parent)
    : QDialog(parent), programFolder_(programFolder), values_(OptionValues::read(programFolder)),
      SSTab1(new QTabWidget(this)), txtdescription(new QTextEdit(this)), editor_(new OptionsEditor(this)),
      search_(new OptionsSearch(dialogs, this)),
      chksearch(new QCheckBox(QStringLiteral("Show search"), this)), lblfailure(new QLabel(this)),
      cmddefault(button("cmddefault", "Load Default", this)), OKButton(button("OKButton", "OK", this)),
      CancelButton(button("CancelButton", "Cancel", this))
{
    setObjectName(QStringLiteral("tidyopfrm"));
    setWindowTitle(QStringLiteral("Convert and Tidy Options"));
    setWindowModality(Qt::WindowModal);
    SSTab1->setObjectName(QStringLiteral("SSTab1"));
    txtdescription->setObjectName(QStringLiteral("txtdescription"));
    txtdescription->setAccessibleName(QStringLiteral("Description"));
    txtdescription->setReadOnly(true);
    txtdescription->setTabChangesFocus(true);
    const auto heightOf = [this](int lines) { return lines * fontMetrics().lineSpacing() + 12; };
    txtdescription->setMinimumHeight(heightOf(fewestDescriptionLines));
    txtdescription->setMaximumHeight(heightOf(descriptionLines));
    chksearch->setObjectName(QStringLiteral("chksearch"));
    lblfailure->setObjectName(QStringLiteral("lblfailure"));
    lblfailure->setWordWrap(true);
    lblfailure->setTextFormat(Qt::PlainText);
    OKButton->setDefault(true);
    for (OptionTab tab : tabOrder)
        addTab(rangeOf(tab));
    layOut();
    connectControls();
    selectFirst();
}

void tidyopfrm::addTab(const TabRange &range)
{
    auto *page = new QWidget(SSTab1);
    auto *layout = new QVBoxLayout(page);
    auto *list = new OptionsList(range, values_, page);
    list->setObjectName(QStringLiteral("ListView%1").arg(lists_.size()));
    auto *edit = button("cmdedit", "Edit Options", page);
    layout->addWidget(list);
    layout->addWidget(edit, 0, Qt::AlignLeft);
    SSTab1->addTab(page, QString::fromLatin1(range.caption));
    lists_ << list;
    connect(list, &OptionsList::optionSelected, this, &tidyopfrm::describe);
    connect(list, &OptionsList::editRequested, this, &tidyopfrm::editOption);
    connect(edit, &QPushButton::clicked, this, &tidyopfrm::editOption);
}

void tidyopfrm::layOut()
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1, 1);
    layout->addWidget(editor_);
    layout->addWidget(txtdescription);
    layout->addWidget(search_);
    layout->addWidget(lblfailure);
    auto *buttons = new QHBoxLayout;
    layout->addLayout(buttons);
    buttons->addWidget(chksearch);
    buttons->addStretch();
    buttons->addWidget(cmddefault);
    buttons->addWidget(OKButton);
    buttons->addWidget(CancelButton);
    search_->hide();
    lblfailure->hide();
    resize(dialogs::sizeInCharacters(*this, usualColumns, usualLines));
}

void tidyopfrm::connectControls()
{
    connect(SSTab1, &QTabWidget::currentChanged, this, [this] { describe(currentList()->selected()); });
    connect(editor_, &OptionsEditor::applied, this, &tidyopfrm::showApplied);
    connect(editor_, &OptionsEditor::closed, this, [this] {
        OKButton->setEnabled(true);
        currentList()->setFocus();
    });
    connect(search_, &OptionsSearch::optionChosen, this, &tidyopfrm::chooseResult);
    connect(chksearch, &QCheckBox::toggled, this, &tidyopfrm::showSearch);
    connect(cmddefault, &QPushButton::clicked, this, &tidyopfrm::loadDefault);
    connect(OKButton, &QPushButton::clicked, this, &tidyopfrm::accept);
    connect(CancelButton, &QPushButton::clicked, this, &tidyopfrm::reject);
}

void tidyopfrm::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    if (openedHeight_ == 0)
        openedHeight_ = height();
}

// Escape drops the value being edited first, and only then the dialog.
void tidyopfrm::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && editor_->index() >= 0)
        editor_->hidcomb();
    else
        QDialog::keyPressEvent(event);
}

OptionsList *tidyopfrm::currentList() const { return lists_.at(SSTab1->currentIndex()); }

// Every tab starts with its first row, so that the keyboard finds one everywhere.
void tidyopfrm::selectFirst()
{
    for (OptionTab tab : tabOrder)
        lists_.at(positionOf(tab))->select(itemKey(rangeOf(tab).first));
    selitm(OptionTab::Markup, itemKey(0));
}

void tidyopfrm::selitm(OptionTab tab, const QString &key)
{
    SSTab1->setCurrentIndex(positionOf(tab));
    const bool found = currentList()->select(key);
    currentList()->setFocus();
    describe(found ? lstkey(key) : -1);
}

void tidyopfrm::describe(int index)
{
    txtdescription->setPlainText(index < 0 ? QString() : optionCatalogue()[size_t(index)].descriptionText());
}

void tidyopfrm::editOption()
{
    const int index = currentList()->selected();
    if (!editor_->edit(index, values_.value(index)))
        return;
    OKButton->setEnabled(false); // until the value is applied or dropped
    layout()->activate(); // the list has become lower
    currentList()->scrollToItem(currentList()->currentItem());
}

void tidyopfrm::showApplied(int index, const QString &value)
{
    values_.apply(index, value);
    lists_.at(positionOf(tabForIndex(index)))->refresh(index);
}

void tidyopfrm::loadDefault()
{
    editor_->hidcomb();
    const auto written = values_.loadDefault(programFolder_);
    for (OptionsList *list : std::as_const(lists_))
        list->refresh();
    fail(written.reason());
}

void tidyopfrm::showSearch(bool shown)
{
    search_->setVisible(shown);
    const int room = shown ? search_->sizeHint().height() + searchGap : 0;
    layout()->activate();
    resize(dialogs::withinScreen(*this, {width(), openedHeight_ + room}));
    if (shown)
        search_->start();
}

void tidyopfrm::chooseResult(const QString &name)
{
    const int index = findOption(name);
    selitm(tabForIndex(index), itemKey(index));
}

void tidyopfrm::fail(const QString &reason)
{
    lblfailure->setText(reason);
    lblfailure->setVisible(!reason.isEmpty());
}

void tidyopfrm::accept()
{
    if (const auto saved = values_.save(programFolder_); !saved)
        return fail(saved.reason());
    QDialog::accept();
}

} // namespace tidy
