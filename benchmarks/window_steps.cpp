#include "window_steps.h"

#include "measure.h"

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

// Opens nothing: the benchmark asks for no page.
class NoShell : public shell::Shell
{
public:
    platform::Result<void> open(const QString &) override { return {}; }
    platform::Result<void> start(const QString &, const QString &) override { return {}; }
};

void paint(const QWidget *view)
{
    QApplication::processEvents();
    const_cast<QWidget *>(view)->repaint();
}

class Steps
{
public:
    Steps(app::mainfrm &window, const Yardsticks &yardsticks)
        : window_(window), tabs_(*window.findChild<QTabWidget *>(QStringLiteral("SSTab1"))),
          tree_(*window.findChild<QTreeView *>(QStringLiteral("TreeView1"))), yardsticks_(yardsticks)
    { }

    void open(const QString &path)
    {
        const qint64 before = residentBytes();
        const double time = milliseconds([&] {
            window_.session().life().openPath(path);
            paint(tree_.viewport());
        });
        print(QStringLiteral("open until the tree is shown"), time, QStringLiteral("ms"),
              ratio(time, yardsticks_.sax, "the SAX pass") + ratio(time, yardsticks_.dom, "the DOM parse"));
        const double size = double(QFileInfo(path).size());
        const auto grown = double(residentBytes() - before);
        print(QStringLiteral("memory grown by, in Normal Mode"), grown / 1e6, QStringLiteral("MB"),
              ratio(grown, size, "the file"));
    }

    void serialise(const QString &what)
    {
        QByteArray text;
        const double time = milliseconds([&] { text = document().xml(); });
        print(what, time, QStringLiteral("ms"), ratio(time, yardsticks_.copy, "a memory copy"));
    }

    void switchTo(const QString &what, int tab, double yardstick, const char *yardstickName)
    {
        const double time = milliseconds([&] {
            tabs_.setCurrentIndex(tab);
            paint(tabs_.currentWidget());
        });
        print(what, time, QStringLiteral("ms"), ratio(time, yardstick, yardstickName));
    }

    void editInTheMiddle()
    {
        dom::Node *root = document().documentElement();
        const double time = milliseconds([&] {
            dom::Node *middle = root->child(root->childCount() / 2);
            const auto made = document().createElement(QStringLiteral("Element"));
            if (made)
                (void)document().insertBefore(root, *made, middle);
            paint(tree_.viewport());
        });
        print(QStringLiteral("one structural edit in the middle"), time, QStringLiteral("ms"),
              ratio(time, yardsticks_.sax, "the SAX pass"));
    }

    void save(const QString &what)
    {
        const double time = milliseconds([&] { window_.session().saving().save(); });
        const double plain = yardsticks_.copy + yardsticks_.durableWrite;
        print(what, time, QStringLiteral("ms"), ratio(time, plain, "a copy and a flushed write"));
    }

private:
    dom::Document &document() { return window_.session().state().Document; }

    app::mainfrm &window_;
    QTabWidget &tabs_;
    QTreeView &tree_;
    const Yardsticks &yardsticks_;
};

} // namespace

void measureWindow(const QString &documentPath, const Yardsticks &yardsticks)
{
    dialogs::ScriptedDialogs nobody;
    NoShell shell;
    settings::SettingsStore settings(QFileInfo(documentPath).path() + QStringLiteral("/settings.ini"));
    QDir().mkpath(QFileInfo(documentPath).path() + QStringLiteral("/tdyex"));
    const files::UserFolders folders(QFileInfo(documentPath).path());
    app::mainfrm window({nobody, shell, settings, folders, browser::warmUp()});
    window.prelodr({});
    window.show();
    QTest::qWait(1000); // until the browser's processes have settled

    Steps steps(window, yardsticks);
    steps.open(documentPath);
    steps.serialise(QStringLiteral("serialise unedited"));
    steps.switchTo(QStringLiteral("Normal to XML Mode, first time"), document::XmlMode, yardsticks.scintilla,
                   "a bare Scintilla load");
    steps.switchTo(QStringLiteral("XML to Normal Mode, unchanged"), document::NormalMode, yardsticks.sax,
                   "the SAX pass");
    steps.editInTheMiddle();
    steps.editInTheMiddle();
    steps.serialise(QStringLiteral("serialise after the edits"));
    steps.save(QStringLiteral("save after the edits"));
    steps.switchTo(QStringLiteral("Normal to XML Mode, edited"), document::XmlMode, yardsticks.scintilla,
                   "a bare Scintilla load");
    steps.switchTo(QStringLiteral("XML to Normal Mode, unchanged"), document::NormalMode, yardsticks.sax,
                   "the SAX pass");
    for (const QString &question : nobody.unanswered())
        print(QStringLiteral("unexpected question: ") + question, 0, {});
}

} // namespace bench
