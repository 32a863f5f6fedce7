#include "editor/properties_dialog.h"

#include "editor/colours_page.h"
#include "editor/fonts_page.h"
#include "editor/keyboard_page.h"
#include "editor/language_page.h"
#include "editor/options_page.h"
#include "platform/control/code_editor.h"
#include "platform/dialogs/page_view.h"
#include "platform/dialogs/window_size.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>
#include <algorithm>

namespace editor {

PropertiesDialog::PropertiesDialog(control::CodeEditor &editor, QWidget *parent)
    : QDialog(parent), editor_(editor), draft_(draftOf(editor)), pages_(new QTabWidget(this)),
      ok_(button("OKButton", tr("OK"))), cancel_(button("CancelButton", tr("Cancel"))),
      apply_(button("cmdApply", tr("&Apply"))), defaults_(button("cmdDefaults", tr("Restore &Defaults")))
{
    setObjectName(QStringLiteral("frmEditorProperties"));
    setWindowTitle(tr("Editor Properties"));
    setWindowModality(Qt::WindowModal);
    pages_->setObjectName(QStringLiteral("tabPages"));
    pages_->setAccessibleName(tr("Pages"));
    addPage(new ColoursPage(draft_, this), "pgColours", tr("&Colours"));
    addPage(new FontsPage(draft_, this), "pgFonts", tr("&Fonts"));
    addPage(new OptionsPage(draft_, this), "pgOptions", tr("&Options"));
    addPage(new LanguagePage(draft_, this), "pgLanguage", tr("&Language"));
    addPage(new KeyboardPage(draft_, editor.window(), this), "pgKeyboard", tr("&Keyboard"));
    layOut();
    resize(usualSize());
    connect(pages_, &QTabWidget::currentChanged, this, [this] {
        takePending();
        showPage();
    });
    connect(ok_, &QPushButton::clicked, this, &PropertiesDialog::accept);
    connect(cancel_, &QPushButton::clicked, this, &PropertiesDialog::reject);
    connect(apply_, &QPushButton::clicked, this, &PropertiesDialog::apply);
    connect(defaults_, &QPushButton::clicked, this, [this] { currentPage()->restoreDefaults(); });
    takeFromEditor();
}

QPushButton *PropertiesDialog::button(const char *name, const QString &caption)
{
    auto *made = new QPushButton(caption, this);
    made->setObjectName(QString::fromLatin1(name));
    return made;
}

void PropertiesDialog::addPage(PropertiesPage *page, const char *name, const QString &caption)
{
    page->setObjectName(QString::fromLatin1(name));
    pages_->addTab(new dialogs::PageView(page), caption);
    connect(page, &PropertiesPage::changed, this, &PropertiesDialog::showState);
}

void PropertiesDialog::layOut()
{
    ok_->setDefault(true);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(ok_, QDialogButtonBox::AcceptRole);
    buttons->addButton(cancel_, QDialogButtonBox::RejectRole);
    buttons->addButton(apply_, QDialogButtonBox::ApplyRole);
    buttons->addButton(defaults_, QDialogButtonBox::ResetRole);
    auto *whole = new QVBoxLayout(this);
    whole->addWidget(pages_, 1);
    whole->addWidget(buttons);
}

// The tabs count only pages of which the height depends on the width. OK stays within reach on any screen.
QSize PropertiesDialog::usualSize() const
{
    int tallest = 0;
    for (const PropertiesPage *page : pages_->findChildren<PropertiesPage *>())
        tallest = std::max(tallest, page->sizeHint().height());
    const int missing = tallest - currentPage()->sizeHint().height();
    return dialogs::withinScreen(*this, sizeHint() + QSize(0, std::max(0, missing)));
}

PropertiesPage *PropertiesDialog::currentPage() const
{
    return static_cast<PropertiesPage *>(static_cast<QScrollArea *>(pages_->currentWidget())->widget());
}

void PropertiesDialog::showEvent(QShowEvent *event)
{
    if (!event->spontaneous())
        takeFromEditor();
    QDialog::showEvent(event);
}

void PropertiesDialog::takeFromEditor()
{
    draft_ = draftOf(editor_);
    showPage();
}

void PropertiesDialog::showPage()
{
    currentPage()->showDraft();
    showState();
}

void PropertiesDialog::showState()
{
    const auto pages = findChildren<PropertiesPage *>();
    const bool pending = std::any_of(pages.begin(), pages.end(),
                                     [](const PropertiesPage *page) { return page->hasPending(); });
    apply_->setEnabled(pending || differs(draft_, editor_));
    defaults_->setEnabled(currentPage()->hasDefaults());
}

// Who leaves a page or accepts it means what stands in its fields.
void PropertiesDialog::takePending()
{
    for (PropertiesPage *page : findChildren<PropertiesPage *>())
        page->takePending();
}

void PropertiesDialog::apply()
{
    takePending();
    editor::apply(draft_, editor_);
    takeFromEditor();
}

void PropertiesDialog::accept()
{
    apply();
    QDialog::accept();
}

} // namespace editor
