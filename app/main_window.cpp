#include "app/main_window.h"

#include "app/check_progress.h"
#include "app/document_mark.h"
#include "app/editor_host.h"
#include "app/encoding_menu.h"
#include "app/file_drop.h"
#include "app/file_watch.h"
#include "app/help_window.h"
#include "app/markup_clipboard.h"
#include "app/node_editing.h"
#include "app/node_images.h"
#include "app/quick_tags_host.h"
#include "app/recent_documents.h"
#include "app/recovery.h"
#include "app/status_bar.h"
#include "app/tidy_host.h"
#include "app/toolbars.h"
#include "app/tree_place.h"
#include "app/view_frame.h"
#include "app/window_place.h"
#include "platform/browser/web_browser.h"
#include "platform/control/code_editor.h"
#include "platform/files/file_helpers.h"
#include "platform/files/user_folders.h"
#include "platform/system/settings_store.h"
#include "platform/system/shell.h"
#include "tree/node_commands.h"
#include "tree/tree_model.h"
#include "tree/tree_view.h"

#include <QApplication>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

namespace app {

mainfrm::mainfrm(const Outside &outside)
    : dialogs_(outside.dialogs), shell_(outside.shell), settings_(outside.settings),
      folders_(outside.folders), commands_(this), menus_(*menuBar(), commands_),
      StatusBar1(new StatusBar(this)),
      Toolbar1(makeToolBar("Toolbar1", tr("File and mode"), commands_, this)), frame_(new ViewFrame(this)),
      CodeMax1(new control::CodeEditor(frame_)),
      WebBrowser1(new browser::WebBrowser(outside.previews, frame_)),
      routing_(*CodeMax1, commands_, [this](const QString &text) { note(text); }),
      session_(std::make_unique<document::Session>(
          document::Surroundings{*this, *CodeMax1, *WebBrowser1, dialogs_, folders_.exchange()})),
      model_(std::make_unique<tree::TreeModel>(session_->state().Document)),
      TreeView1(new tree::TreeView(*model_, frame_)),
      place_(std::make_unique<TreePlace>(*TreeView1, *model_, session_->state().Document)),
      clipboard_(std::make_unique<MarkupClipboard>()),
      nodes_(std::make_unique<tree::NodeCommands>(*model_, session_->state().Document, *TreeView1, dialogs_,
                                                  *clipboard_)),
      drops_(std::make_unique<FileDrop>(*this, [this](const QStringList &paths) { openDropped(paths); }))
{
    setObjectName(QStringLiteral("mainfrm"));
    setMinimumSize(leastSize());
    setContextMenuPolicy(Qt::NoContextMenu);
    addToolBar(Toolbar1);
    setStatusBar(StatusBar1);
    addViews();
    setCentralWidget(frame_);
    bindCommands();
    connectEditor();
    connectTree();
    editNodes();
    serveEditor(outside);
    tellOfDocument();
    keepUnsaved();
    watchFile();
    restorePlace(*this, settings_, folders_.window());
}

// The tree looks into the document to the last, so it goes before the session does.
mainfrm::~mainfrm()
{
    WebBrowser1->disconnect(this); // whose page ends when it is hidden for the last time
    editorHost_.reset();
    tidy_.reset();
    quickTags_.reset();
    delete TreeView1;
    nodeEditing_.reset();
    nodes_.reset();
    model_.reset();
}

void mainfrm::addViews()
{
    TreeView1->setObjectName(QStringLiteral("TreeView1"));
    TreeView1->setNodeImages(nodeImages());
    CodeMax1->setObjectName(QStringLiteral("CodeMax1"));
    CodeMax1->setCopyMark(sourceFormat());
    WebBrowser1->setObjectName(QStringLiteral("WebBrowser1"));
    const auto bar = [this](const char *name, const QString &title) {
        return makeToolBar(name, title, commands_, frame_);
    };
    frame_->addPage(tr("Normal Mode"), TreeView1,
                    {bar("Toolbar2", tr("Edit nodes")), bar("Toolbar5", tr("Insert nodes"))});
    frame_->addPage(tr("XML Mode"), CodeMax1, {bar("tBar", tr("Edit text"))});
    frame_->addPage(tr("Preview"), WebBrowser1, {bar("Toolbar3", tr("Browse"))});
    connect(WebBrowser1, &browser::WebBrowser::noted, this, &mainfrm::note);
    connect(WebBrowser1, &browser::WebBrowser::historyChanged, this, &mainfrm::browsed);
    frame_->setResized([this] { layOut(); });
    connect(frame_->tabs(), &QTabWidget::currentChanged, this, &mainfrm::tabChanged);
    connect(frame_->tabs(), &QTabWidget::tabBarClicked, this, [this] { note({}); });
}

void mainfrm::browsed()
{
    commands_.action(QStringLiteral("back"))->setEnabled(WebBrowser1->canGoBack());
    commands_.action(QStringLiteral("forward"))->setEnabled(WebBrowser1->canGoForward());
}

void mainfrm::connectEditor()
{
    connect(CodeMax1, &control::CodeEditor::textEdited, this, [this] { routing_.textEdited(); });
    connect(CodeMax1, &control::CodeEditor::caretMoved, this, [this] { routing_.caretMoved(); });
    connect(CodeMax1, &control::CodeEditor::noted, this, &mainfrm::note);
    connect(CodeMax1, &control::CodeEditor::commandStateChanged, this, [this] { routing_.refresh(); });
    QMenu *menu = menus_.menu(QStringLiteral("editcmx"));
    connect(menu, &QMenu::aboutToShow, this, [this] { routing_.refresh(); });
    connect(CodeMax1, &control::CodeEditor::contextMenuRequested, menu,
            [menu](const QPoint &at) { menu->popup(at); });
}

void mainfrm::connectTree()
{
    connect(TreeView1, &tree::TreeView::contextMenuRequested, this,
            [this](const QPoint &at) { menus_.menu(QStringLiteral("mnueditnod1"))->popup(at); });
    connect(TreeView1, &tree::TreeView::noted, this, &mainfrm::note);
}

void mainfrm::editNodes()
{
    nodes_->setNewDocument(document::newDocumentTemplate());
    nodeEditing_ = std::make_unique<NodeEditing>(NodeEditing::Around{
        .nodes = *nodes_,
        .model = *model_,
        .document = session_->state().Document,
        .view = *TreeView1,
        .editor = *CodeMax1,
        .dialogs = dialogs_,
        .commands = commands_,
        .menus = menus_,
        .currentTab = [this] { return currentTab(); },
        .note = [this](const QString &text) { note(text); },
    });
    quickTags_ = std::make_unique<QuickTagsHost>(*nodes_, *CodeMax1, [this] { return currentTab(); });
    tidy_ = std::make_unique<TidyHost>(TidyHost::Around{
        .window = *this,
        .editor = *CodeMax1,
        .bar = *frame_->progressBar(),
        .dialogs = dialogs_,
        .shell = shell_,
        .folders = folders_,
        .currentPath = [this] { return session_->state().likelyPath(); },
        .takeResult = [this](const QByteArray &text,
                             const QString &proposed) { session_->succession().follow(text, proposed); },
        .currentTab = [this] { return currentTab(); },
        .showXmlMode = [this] { selectTab(document::XmlMode); },
        .note = [this](const QString &text) { note(text); },
    });
}

void mainfrm::serveEditor(const Outside &outside)
{
    editorHost_ = std::make_unique<EditorHost>(EditorHost::Around{
        .window = *this,
        .frame = *frame_,
        .bar = *StatusBar1,
        .editor = *CodeMax1,
        .session = *session_,
        .dialogs = dialogs_,
        .settings = settings_,
        .commands = commands_,
        .previews = outside.previews,
        .dataFolder = folders_.data(),
        .note = [this](const QString &text) { note(text); },
    });
}

void mainfrm::tellOfDocument()
{
    mark_ = std::make_unique<DocumentMark>(DocumentMark::Around{*this, *StatusBar1, *session_, *CodeMax1});
    recent_ = std::make_unique<RecentDocuments>(settings_, *menus_.menu(QStringLiteral("mnurecent")),
                                                [this](const QString &path) {
                                                    note({});
                                                    session_->life().openPath(path);
                                                });
    encodings_ = std::make_unique<EncodingMenu>(
        EncodingMenu::Around{.session = *session_,
                             .reopen = *menus_.menu(QStringLiteral("mnureopenwith")),
                             .save = *menus_.menu(QStringLiteral("mnusavewith")),
                             .button = StatusBar1->encoding(),
                             .beforeRun = [this] { note({}); }});
    connect(CodeMax1, &control::CodeEditor::textEdited, this, [this] { mark_->edited(); });
    connect(CodeMax1, &control::CodeEditor::caretMoved, this, [this] { mark_->caretMoved(); });
    connect(nodes_.get(), &tree::NodeCommands::stepsChanged, this, [this] { mark_->edited(); });
}

void mainfrm::keepUnsaved()
{
    recovery_ = std::make_unique<Recovery>(Recovery::Around{
        .session = *session_,
        .dialogs = dialogs_,
        .menu = *menus_.menu(QStringLiteral("mnurecover")),
        .note = [this](const QString &text) { note(text); },
        .fileNote = [this](const QString &text) { fileNote(text); },
        .dataFolder = folders_.data(),
    });
    connect(CodeMax1, &control::CodeEditor::textEdited, recovery_.get(), &Recovery::edited);
    connect(nodes_.get(), &tree::NodeCommands::stepsChanged, recovery_.get(), &Recovery::edited);
}

void mainfrm::offerRecovery() { recovery_->offer(); }

void mainfrm::textGivenUp(const QByteArray &text) { recovery_->givenUp(text); }

void mainfrm::watchFile()
{
    watch_ = std::make_unique<FileWatch>();
    connect(watch_.get(), &FileWatch::touched, this, &mainfrm::checkFile);
    connect(watch_.get(), &FileWatch::changed, this, &mainfrm::fileChanged);
    connect(watch_.get(), &FileWatch::gone, this, &mainfrm::fileGone);
    connect(watch_.get(), &FileWatch::renamed, this, &mainfrm::fileRenamed);
    session_->saving().askFirst([this] { return mayWriteFile(); });
}

// Not while another question is open, nor behind another program's window: there is time until the user is
// back.
void mainfrm::checkFile()
{
    if (isActiveWindow() && QApplication::activeModalWidget() == nullptr)
        watch_->check();
}

// Written anew with the same content is not changed.
void mainfrm::fileChanged()
{
    if (!session_->life().fileIsAsSaved())
        askToLoadAgain({});
}

// True when it was to be loaded again.
bool mainfrm::askToLoadAgain(const QString &otherwise)
{
    QString text = tr("%1 has been changed by another program. Do you want to load it again?")
                       .arg(files::fileNameOf(session_->state().CurrentFilePath));
    if (session_->saving().isChanged())
        text += QLatin1Char('\n') + tr("What you changed here would be lost.");
    const bool again = dialogs_.message(dialogs::Icon::Question, dialogs::Buttons::YesNo, text + otherwise)
        == dialogs::Answer::Yes;
    const QScopedValueRollback<bool> same(keepsPlace_, true);
    if (std::exchange(fileGone_, false))
        fileNote({});
    if (!again || !session_->life().reload())
        session_->life().keepOver();
    mark_->refresh();
    recovery_->settled();
    return again;
}

bool mainfrm::mayWriteFile()
{
    const FileWatch::Found found = watch_->checkNow();
    if (found == FileWatch::Found::Changed && !session_->life().fileIsAsSaved())
        return !askToLoadAgain(QLatin1Char('\n') + tr("If not, what the other program wrote is replaced."));
    if (found == FileWatch::Found::Gone)
        fileGone();
    return true;
}

void mainfrm::fileRenamed(const QString &path)
{
    const QString former = files::fileNameOf(session_->state().CurrentFilePath);
    if (dialogs_.message(dialogs::Icon::Question, dialogs::Buttons::YesNo,
                         tr("%1 has been renamed to %2. Do you want to go on with it under its new name?")
                             .arg(former, files::fileNameOf(path)))
        != dialogs::Answer::Yes)
        return fileGone();
    session_->saving().follow(path);
    note(tr("%1 is called %2 now.").arg(former, files::fileNameOf(path)));
}

// Its folder may have gone with it, which is not for saving to make: who removed it had a reason.
void mainfrm::fileGone()
{
    fileGone_ = true;
    session_->life().keepOver();
    mark_->refresh();
    recovery_->settled();
    const QString path = session_->state().CurrentFilePath;
    const QString told = files::folderExists(files::parentFolderOf(path))
        ? tr("%1 is no longer there; saving writes it anew.")
        : tr("%1 is no longer there, nor is its folder; save the document elsewhere.");
    fileNote(told.arg(path));
}

void mainfrm::prelodr(const QString &document)
{
    WebBrowser1->setSilent(true);
    setModesEnabled(false, true, true);
    editorHost_->load();
    showMenusFor(currentTab());
    session_->life().prelodr(document);
    for (const QString &line : folders_.notes())
        note(line);
    focusView();
}

// The first file here, each further one in a window of its own; a folder is no document.
void mainfrm::openDropped(const QStringList &paths)
{
    QStringList folders;
    QStringList documents;
    for (const QString &path : paths)
        (files::folderExists(path) ? folders : documents).append(path);
    if (!documents.isEmpty())
        session_->life().openPath(documents.takeFirst());
    for (const QString &path : std::as_const(documents))
        if (const auto opened = shell_.openWindow(path); !opened)
            note(opened.reason());
    if (!folders.isEmpty())
        note(tr("%1 is a folder; only files can be opened.").arg(folders.join(QStringLiteral(", "))));
}

void mainfrm::changeEvent(QEvent *event)
{
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        commands_.refreshIcons();
        TreeView1->setNodeImages(nodeImages());
    } else if (event->type() == QEvent::ActivationChange && watch_) {
        checkFile();
    }
}

void mainfrm::closeEvent(QCloseEvent *event)
{
    if (!left_ && !(editorHost_->mayLeave() && session_->life().leave())) {
        event->ignore();
        return;
    }
    event->accept();
    if (left_)
        return;
    left_ = true;
    recovery_->end();
    leaveForGood();
}

void mainfrm::leaveForGood()
{
    editorHost_->rememberView();
    if (const auto kept = rememberPlace(*this, settings_); !kept)
        note(kept.reason());
    Q_EMIT left();
}

void mainfrm::endAtOnce()
{
    if (std::exchange(left_, true))
        return;
    recovery_->endUnsaved();
    session_->life().clearUp();
    leaveForGood();
}

void mainfrm::setTitleLine(const QString &text)
{
    StatusBar1->setTitleLine(text);
    const QString path = session_->files().istmppath() ? QString() : session_->state().CurrentFilePath;
    fileGone_ = false;
    if (!path.isEmpty()) {
        if (session_->state().stamp.exists)
            recent_->add(path);
        dialogs_.beginIn(files::parentFolderOf(path));
    }
    watch_->watch(path, session_->state().stamp);
    mark_->refresh();
    recovery_->settled();
}

void mainfrm::documentSaved()
{
    watch_->remember();
    mark_->refresh();
    recovery_->settled();
    tellOfFirstWriting();
}

// The document may as well have been written to another file.
void mainfrm::tellOfFirstWriting()
{
    const QString path = session_->state().CurrentFilePath;
    if (session_->files().istmppath() || !files::fileExists(path))
        return;
    recent_->add(path);
    if (std::exchange(fileGone_, false))
        note(tr("%1 was no longer there and was written anew.").arg(path));
}

void mainfrm::note(const QString &text) { StatusBar1->setNote(text); }

void mainfrm::fileNote(const QString &text) { StatusBar1->setFileNote(text); }

void mainfrm::layOut()
{
    if (isMinimized())
        return;
    const int bars = StatusBar1->height() + Toolbar1->height();
    frame_->layOut(
        {frameGeometry().width(), frame_->height() + bars, StatusBar1->height(), Toolbar1->height()});
}

void mainfrm::enterEditor() { routing_.enter(); }

void mainfrm::closeAssignedPreview() { editorHost_->closeAssignedPreview(); }

void mainfrm::openPage(const QString &path)
{
    if (!files::fileExists(path))
        return note(tr("%1 is not there.").arg(path));
    if (help_ == nullptr) {
        help_ = new frmHelp(files::parentFolderOf(path), this);
        connect(help_, &frmHelp::leftBy, this, &mainfrm::openAddress);
    }
    help_->open(path);
}

void mainfrm::openAddress(const QString &address)
{
    if (const auto opened = shell_.open(address); !opened)
        note(opened.reason());
}

void mainfrm::showBusy(bool busy)
{
    if (busy)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

std::function<bool()> mainfrm::patience()
{
    return [progress = std::make_shared<CheckProgress>(this)] { return progress->goOn(); };
}

} // namespace app
