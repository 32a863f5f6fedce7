#include "editor/frmprview.h"

#include "document/language.h"
#include "document/saving.h"
#include "editor/assign_page.h"
#include "editor/edit_menu.h"
#include "editor/header_lines.h"
#include "platform/browser/preview_handler.h"
#include "platform/browser/preview_url.h"
#include "platform/browser/web_browser.h"
#include "platform/control/code_editor.h"
#include "platform/dialogs/dialogs.h"
#include "platform/dialogs/page_view.h"
#include "platform/dialogs/theme_icon.h"
#include "platform/dialogs/window_size.h"
#include "platform/files/file_helpers.h"
#include "platform/files/text_file.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QPushButton>
#include <QShortcut>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>
#include <array>

namespace editor {

namespace {

constexpr int previewTab = 2;

// The usual size, in characters and lines.
constexpr int usualColumns = 128;
constexpr int usualLines = 36;

struct BrowserButton
{
    const char *key;
    const char *caption;
    const char *icon;
    const char *shortcut;
    void (*run)(frmprview &dialog, browser::WebBrowser &browser);
    bool (browser::WebBrowser::*can)() const; // null for always
};

constexpr std::array browserButtons = {
    BrowserButton{"back", "Back", "go-previous", "Alt+Left",
                  [](frmprview &, browser::WebBrowser &browser) { browser.back(); },
                  &browser::WebBrowser::canGoBack},
    BrowserButton{"forward", "Forward", "go-next", "Alt+Right",
                  [](frmprview &, browser::WebBrowser &browser) { browser.forward(); },
                  &browser::WebBrowser::canGoForward},
    BrowserButton{"refreash", "Refresh", "view-refresh", "F5",
                  [](frmprview &dialog, browser::WebBrowser &) { dialog.refrs(); }, nullptr},
};

void enableBy(QAction &action, const browser::WebBrowser &browser, bool (browser::WebBrowser::*can)() const)
{
    const auto refresh = [&action, &browser, can] { action.setEnabled((browser.*can)()); };
    QObject::connect(&browser, &browser::WebBrowser::historyChanged, &action, refresh);
    refresh();
}

template <typename Control>
Control *named(const char *name, Control *control)
{
    control->setObjectName(QLatin1String(name));
    return control;
}

} // namespace

frmprview::frmprview(AssignedSource source, QWidget *parent)
    : QDialog(parent), source_(std::move(source)), file_(source_.PreviewFilePath),
      location_(urlLocation(source_.previewCopyPath())), SSTab1(named("SSTab1", new QTabWidget(this))),
      assignPage_(new AssignPage(location_)),
      CodeMax1(named("CodeMax1", new control::CodeEditor(nullptr, source_.library))),
      Toolbar3(named("Toolbar3", new QToolBar(QStringLiteral("Browse")))),
      WebBrowser1(named("WebBrowser1", new browser::WebBrowser(source_.previews))),
      cmdcancel(named("cmdcancel", new QPushButton(QStringLiteral("Close"), this)))
{
    setObjectName(QStringLiteral("frmprview"));
    setWindowTitle(QStringLiteral("Assigned file Preview"));
    setWindowFlag(Qt::WindowMinMaxButtonsHint);
    setAttribute(Qt::WA_DeleteOnClose);
    makePages();
    source_.dress(*CodeMax1);
    handler().detours().setOriginal(file_.path(), {});
    resize(dialogs::sizeInCharacters(*this, usualColumns, usualLines));
    assignPage_->setFocus();
}

frmprview::~frmprview()
{
    SSTab1->disconnect(this); // its pages go one by one
    unload();
}

void frmprview::makePages()
{
    SSTab1->addTab(new dialogs::PageView(assignPage_), QStringLiteral("&Assign"));
    SSTab1->addTab(editorPage(), QStringLiteral("Assigned &file"));
    SSTab1->addTab(previewPage(), QStringLiteral("&Preview"));
    SSTab1->tabBar()->setAccessibleName(windowTitle());
    connect(SSTab1, &QTabWidget::currentChanged, this, &frmprview::refrs);
    connect(assignPage_, &AssignPage::browseClicked, this, &frmprview::browse);

    connect(cmdcancel, &QPushButton::clicked, this, &QDialog::reject);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(cmdcancel, QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(SSTab1, 1);
    layout->addWidget(buttons);
}

QWidget *frmprview::editorPage()
{
    auto *page = new QWidget(SSTab1);
    editorLayout_ = new QVBoxLayout(page);
    editorLayout_->setContentsMargins(0, 0, 0, 0);
    editorLayout_->setSpacing(0);
    editorLayout_->addWidget(CodeMax1, 1);
    CodeMax1->setAccessibleName(QStringLiteral("Text of the assigned file"));
    CodeMax1->setLanguage(control::Language::Xml);
    giveEditMenu(*CodeMax1);
    page->setFocusProxy(CodeMax1);
    return page;
}

QWidget *frmprview::previewPage()
{
    auto *page = new QWidget(SSTab1);
    auto *layout = new QVBoxLayout(page);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(Toolbar3);
    layout->addWidget(WebBrowser1, 1);
    addButtons(*Toolbar3);
    WebBrowser1->setAccessibleName(QStringLiteral("Preview of the assigned file"));
    connect(WebBrowser1, &browser::WebBrowser::noted, this,
            [this](const QString &text) { source_.note(text); });
    page->setFocusProxy(WebBrowser1);
    // The page keeps keys to itself.
    new QShortcut(Qt::Key_Escape, page, this, &QDialog::reject, Qt::WidgetWithChildrenShortcut);
    return page;
}

void frmprview::addButtons(QToolBar &bar)
{
    for (const BrowserButton &row : browserButtons) {
        auto *action
            = new QAction(dialogs::themeIcon(QLatin1String(row.icon)), QLatin1String(row.caption), &bar);
        action->setShortcut(QKeySequence(QLatin1String(row.shortcut)));
        action->setToolTip(QStringLiteral("%1 (%2)").arg(
            action->text(), action->shortcut().toString(QKeySequence::NativeText)));
        connect(action, &QAction::triggered, this, [this, run = row.run] { run(*this, *WebBrowser1); });
        if (row.can != nullptr)
            enableBy(*action, *WebBrowser1, row.can);
        bar.addAction(action);
        QWidget *button = named(row.key, bar.widgetForAction(action));
        button->setProperty("key", button->objectName());
        button->setFocusPolicy(Qt::TabFocus);
    }
}

void frmprview::browse()
{
    QString path;
    do {
        path = source_.dialogs.openFile(QStringLiteral("Open"), document::documentFilter());
        if (path.isEmpty())
            return;
    } while (!files::fileExists(path));
    assign(QFileInfo(path).absoluteFilePath());
}

// A file that cannot be read leaves everything as it is.
void frmprview::assign(const QString &path)
{
    const auto text = files::readTextFile(path);
    if (!text)
        return source_.note(text.reason());
    if (!text->note.isEmpty())
        source_.note(text->note);
    encoding_ = text->form.encoding;
    assignPage_->showAssignedFile(path);
    CodeMax1->setLanguage(document::languageOf(path, text->utf8));
    CodeMax1->loadText(text->utf8);
    handler().detours().setOriginal(file_.path(), path);
}

void frmprview::refrs()
{
    if (SSTab1->currentIndex() != previewTab)
        return;
    bringCopyUpToDate();
    if (const auto written = file_.write(CodeMax1->text(), encoding_); !written)
        return source_.note(written.reason());
    WebBrowser1->setSilent(true);
    WebBrowser1->navigate(file_.path());
}

// The location that was shown leads to the copy wherever that is by now. Beside a document in a folder that
// takes no file it is shown from memory.
void frmprview::bringCopyUpToDate()
{
    const QByteArray text = source_.currentText();
    const auto written = source_.writePreviewCopy(text);
    const QString path = browser::cleanPreviewPath(source_.previewCopyPath());
    handler().detours().setAlias(location_, path);
    handler().dropOverlay(overlaid_);
    overlaid_.clear();
    if (written)
        return;
    const auto bytes = files::encodeText(text, {});
    overlaid_ = path;
    handler().setOverlay(path, bytes ? *bytes : text);
    source_.note(QStringLiteral("Shown without a preview copy: %1").arg(written.reason()));
}

// In the editor it takes a selection or a list away, and must not take the text away when there is none.
void frmprview::keyPressEvent(QKeyEvent *event)
{
    if (event->key() != Qt::Key_Escape || !CodeMax1->hasFocus())
        QDialog::keyPressEvent(event);
}

void frmprview::done(int result)
{
    QDialog::done(result);
    unload();
}

void frmprview::unload()
{
    if (!std::exchange(loaded_, false))
        return;
    handler().detours().dropAlias(location_);
    handler().detours().dropOriginal(file_.path());
    handler().dropOverlay(overlaid_);
    file_.remove();
    source_.closed();
}

browser::PreviewHandler &frmprview::handler() { return source_.previews->handler(); }

} // namespace editor
