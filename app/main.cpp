#include "app/appearance.h"
#include "app/command_line.h"
#include "app/main_window.h"
#include "app/read_ahead.h"
#include "app/splash.h"
#include "document/life.h"
#include "platform/browser/browser_process.h"
#include "platform/browser/preview_profile.h"
#include "platform/dialogs/qt_dialogs.h"
#include "platform/dialogs/theme_icon.h"
#include "platform/files/file_helpers.h"
#include "platform/files/user_folders.h"
#include "platform/system/desktop_shell.h"
#include "platform/system/end_request.h"
#include "platform/system/settings_store.h"

#include <QApplication>
#include <QFile>
#include <QIcon>
#include <cstdio>

namespace {

// With those that the toolkit takes for itself, which are no wish for help at any rate.
QStringList rawArguments(int argc, char *argv[])
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    return arguments;
}

int say(const app::CommandLine &asked)
{
    const bool refused = asked.wish == app::CommandLine::Wish::Refused;
    std::fputs(asked.said.toLocal8Bit().constData(), refused ? stderr : stdout);
    return refused ? 2 : 0;
}

} // namespace

// All that needs a temporary folder, other programs among it, finds one that is there.
static files::TemporaryFolder settleTemporaryFolder()
{
    files::TemporaryFolder folder = files::temporaryFolder();
    if (!folder.note.isEmpty())
        qputenv("TMPDIR", QFile::encodeName(folder.path));
    return folder;
}

int main(int argc, char *argv[])
{
    QApplication::setApplicationName(QStringLiteral("Zelph XML Editor"));
    QApplication::setApplicationVersion(QStringLiteral(XE_VERSION));
    // What needs no window is said where there is no display either.
    if (const app::CommandLine asked = app::readCommandLine(rawArguments(argc, argv));
        asked.wish == app::CommandLine::Wish::Help || asked.wish == app::CommandLine::Wish::Version)
        return say(asked);
    const files::TemporaryFolder temporary = settleTemporaryFolder();
    browser::prepareProcess();
    QApplication application(argc, argv);
    QApplication::setDesktopFileName(QStringLiteral("xmleditor"));
    QApplication::setWindowIcon(QIcon(dialogs::iconPath(QStringLiteral("xmleditor"))));
    // The one window to close for good says so itself; the start-up window must not end the program.
    QApplication::setQuitOnLastWindowClosed(false);

    const app::CommandLine asked = app::readCommandLine(QApplication::arguments().mid(1));
    if (asked.wish != app::CommandLine::Wish::Edit)
        return say(asked);
    const QStringList first = asked.documents.first(qMin<qsizetype>(1, asked.documents.size()));
    dialogs::QtDialogs dialogs;
    shell::DesktopShell shell;
    settings::SettingsStore settings;
    app::putOn(app::chosenAppearance(settings));
    files::UserFolders folders(files::programFolder());
    if (!temporary.note.isEmpty())
        folders.addNote(temporary.note);
    const auto previews = browser::warmUp();
    const shell::EndRequest endRequest;
    std::unique_ptr<app::mainfrm> window;

    app::frmSplash splash(dialogs, files::programFolder(), [&] {
        window = std::make_unique<app::mainfrm>(app::Outside{dialogs, shell, settings, folders, previews});
        QObject::connect(window.get(), &app::mainfrm::left, &application, [] { QApplication::exit(0); });
        QObject::connect(&endRequest, &shell::EndRequest::asked, window.get(), &app::mainfrm::endAtOnce);
        dialogs.setParentWindow(window.get());
        window->prelodr(first.value(0));
        window->show();
        for (const QString &path : asked.documents.sliced(first.size()))
            static_cast<void>(shell.openWindow(path));
        // Not before the start-up window has gone.
        QMetaObject::invokeMethod(window.get(), &app::mainfrm::offerRecovery, Qt::QueuedConnection);
    });
    // Who has a window already need not be told what the program is called.
    if (folders.window() > 1)
        splash.goOn();
    else
        splash.show();
    app::readAhead(first.value(0));
    return QApplication::exec();
}
