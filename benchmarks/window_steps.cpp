#include "window_steps.h"

#include "document_maker.h"
#include "measure.h"
#include "report.h"

#include "app/main_window.h"
#include "document/workspace.h"
#include "platform/browser/browser_process.h"
#include "platform/browser/preview_profile.h"
#include "platform/dialogs/scripted_dialogs.h"
#include "platform/files/user_folders.h"
#include "platform/system/settings_store.h"
#include "platform/system/shell.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTabWidget>
#include <QTest>
#include <QTreeView>

namespace bench {

namespace {

constexpr double frame = 16; // milliseconds; what takes longer is felt
constexpr int splashTime = 2500; // milliseconds that the start-up window stands

// Opens nothing: the benchmark asks for no page.
class NoShell : public shell::Shell
{
public:
    platform::Result<void> open(const QString &) override { return {}; }
    platform::Result<void> openWindow(const QString &) override { return {}; }
    shell::StartedHelper start(const QString &, const QString &) override
    {
        return platform::Failure{QStringLiteral("Nothing is started here.")};
    }
};

// A window of the program with folders of its own.
struct Desk
{
    dialogs::ScriptedDialogs nobody;
    NoShell shell;
    settings::SettingsStore settings;
    files::UserFolders folders;
    std::shared_ptr<browser::PreviewProfile> previews;

    explicit Desk(const QDir &folder)
        : settings(folder.filePath(QStringLiteral("settings.ini"))), folders(folder.path()),
          previews(browser::warmUp())
    { }

    app::Outside outside() { return {nobody, shell, settings, folders, previews}; }
};

class Steps
{
public:
    Steps(Desk &desk, app::mainfrm &window, const Yardsticks &yardsticks, const Report &report)
        : desk_(desk), window_(window), tabs_(*window.findChild<QTabWidget *>(QStringLiteral("SSTab1"))),
          tree_(*window.findChild<QTreeView *>(QStringLiteral("TreeView1"))), yardsticks_(yardsticks),
          report_(report)
    { }

    void open(const QString &path)
    {
        const qint64 before = residentBytes();
        const auto open = [&] {
            window_.session().life().openPath(path);
            paint(tree_.viewport());
        };
        const double first = milliseconds(open);
        const auto grown = double(residentBytes() - before);
        report_.row(QStringLiteral("memory grown by, in Normal Mode"), grown / 1e6, "MB",
                    {{double(QFileInfo(path).size()) / 1e6, "the file"}});
        const double time = std::min(first, milliseconds(open));
        report_.row(QStringLiteral("open until the tree is shown"), time, "ms",
                    {{yardsticks_.sax, "the SAX pass", 2}, {yardsticks_.dom, "the DOM parse", 0.25}});
        report_.row(QStringLiteral("nodes in the tree"), double(document().documentElement()->subtreeCount()),
                    "");
    }

    void serialise(const QString &what)
    {
        QByteArray text;
        const double time = milliseconds([&] { text = document().xml(); });
        report_.row(what, time, "ms", {{yardsticks_.copy, "a memory copy"}});
    }

    void switchTo(const QString &what, int tab, const Share &yardstick)
    {
        const double time = milliseconds([&] {
            tabs_.setCurrentIndex(tab);
            paint(tabs_.currentWidget());
        });
        report_.row(what, time, "ms", {yardstick});
    }

    void edit(const QString &what)
    {
        dom::Node *root = document().documentElement();
        const double time = milliseconds(
            [&] {
                dom::Node *middle = root->child(root->childCount() / 2);
                const auto made = document().createElement(QStringLiteral("Element"));
                if (made)
                    (void)document().insertBefore(root, *made, middle);
                paint(tree_.viewport());
            },
            3);
        report_.row(what, time, "ms", {{yardsticks_.sax, "the SAX pass"}}, frame);
    }

    // By the menu, until there is nothing left to do.
    void command(const QString &what, const QString &name, std::initializer_list<Share> shares)
    {
        const double time = milliseconds([&] {
            window_.commands().action(name)->trigger();
            waitUntilIdle();
            paint(tabs_.currentWidget());
        });
        report_.row(what, time, "ms", shares);
    }

    void checkForErrors()
    {
        const double time = milliseconds(
            [&] {
                desk_.nobody.answer(dialogs::Answer::Ok); // no errors found
                window_.commands().action(QStringLiteral("mnuchlxmler"))->trigger();
            },
            3);
        report_.row(QStringLiteral("Check for Errors"), time, "ms", {{yardsticks_.sax, "the SAX pass", 1.2}});
    }

    void save(const QString &what)
    {
        const double time = milliseconds([&] { window_.session().saving().save(); });
        const double plain = yardsticks_.copy + yardsticks_.durableWrite;
        report_.row(what, time, "ms", {{plain, "a copy and a flushed write"}});
    }

    void selectRoot() { tree_.setCurrentIndex(tree_.model()->index(0, 0)); }

private:
    dom::Document &document() { return window_.session().state().Document; }

    Desk &desk_;
    app::mainfrm &window_;
    QTabWidget &tabs_;
    QTreeView &tree_;
    const Yardsticks &yardsticks_;
    const Report &report_;
};

void takeTextSteps(Steps &steps, const Yardsticks &yardsticks)
{
    const Share load{yardsticks.scintilla, "a bare Scintilla load"};
    const Share pass{yardsticks.sax, "the SAX pass"};
    steps.switchTo(QStringLiteral("Normal to XML Mode, first time"), document::XmlMode, load);
    steps.checkForErrors();
    steps.switchTo(QStringLiteral("XML to Normal Mode, unchanged"), document::NormalMode, pass);
    steps.edit(QStringLiteral("one structural edit after the modes"));
    steps.switchTo(QStringLiteral("Normal to XML Mode, edited"), document::XmlMode, load);
    steps.switchTo(QStringLiteral("XML to Normal Mode, again"), document::NormalMode, pass);
}

void takeSteps(Steps &steps, const QString &documentPath, const Yardsticks &yardsticks, bool texts)
{
    const Share pass{yardsticks.sax, "the SAX pass"};
    steps.open(documentPath);
    steps.serialise(QStringLiteral("serialise unedited"));
    steps.edit(QStringLiteral("one structural edit in the middle"));
    steps.serialise(QStringLiteral("serialise after the edits"));
    steps.save(QStringLiteral("save after the edits"));
    if (texts)
        takeTextSteps(steps, yardsticks);
    steps.selectRoot();
    steps.command(QStringLiteral("Expand All until painted"), QStringLiteral("mnuexpand"), {pass});
    steps.edit(QStringLiteral("one structural edit with all expanded"));
    steps.command(QStringLiteral("Collapse All until painted"), QStringLiteral("mnucontract"), {pass});
}

} // namespace

void measureStart(const QDir &folder, const Report &report)
{
    folder.mkpath(QStringLiteral("tdyex"));
    Desk desk(folder);
    QTest::qWait(splashTime);
    std::unique_ptr<app::mainfrm> window;
    const double time = milliseconds([&] {
        window = std::make_unique<app::mainfrm>(desk.outside());
        window->prelodr({});
        window->show();
        waitUntilIdle();
        paint(window.get());
    });
    report.row(QStringLiteral("start, from the splash to a window in use"), time, "ms", {}, 300);
}

void measureWindow(const QDir &folder, const Shape &shape, int megabytes, const Yardsticks &yardsticks,
                   const Report &report)
{
    folder.mkpath(QStringLiteral("tdyex"));
    Desk desk(folder);
    app::mainfrm window(desk.outside());
    window.prelodr({});
    window.show();
    QTest::qWait(1000); // until the browser's processes have settled

    Steps steps(desk, window, yardsticks, report);
    const bool texts = shape.mostText == 0 || megabytes <= shape.mostText;
    takeSteps(steps, folder.filePath(QStringLiteral("document.xml")), yardsticks, texts);
    for (const QString &question : desk.nobody.unanswered())
        report.note(QStringLiteral("unexpected question: ") + question);
}

} // namespace bench
