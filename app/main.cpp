#include "app/main_window.h"
#include "app/read_ahead.h"
#include "app/splash.h"
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
#include <QIcon>

int main(int argc, char *argv[])
{
    browser::prepareProcess();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Zelph XML Editor"));
    QApplication::setApplicationVersion(QStringLiteral(XE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("xmleditor"));
    QApplication::setWindowIcon(QIcon(dialogs::iconPath(QStringLiteral("xmleditor"))));
    // The one window to close for good says so itself; the start-up window must not end the program.
    QApplication::setQuitOnLastWindowClosed(false);

    const QStringList arguments = QApplication::arguments().mid(1);
    dialogs::QtDialogs dialogs;
    shell::DesktopShell shell;
    settings::SettingsStore settings;
    const files::UserFolders folders(files::programFolder());
    const auto previews = browser::warmUp();
    const shell::EndRequest endRequest;
    std::unique_ptr<app::mainfrm> window;

    app::frmSplash splash(dialogs, files::programFolder(), [&] {
        window = std::make_unique<app::mainfrm>(app::Outside{dialogs, shell, settings, folders, previews});
        QObject::connect(window.get(), &app::mainfrm::left, &application, [] { QApplication::exit(0); });
        QObject::connect(&endRequest, &shell::EndRequest::asked, window.get(), &app::mainfrm::endAtOnce);
        dialogs.setParentWindow(window.get());
        window->prelodr(arguments);
        window->show();
        // Not before the start-up window has gone.
        QMetaObject::invokeMethod(window.get(), &app::mainfrm::offerRecovery, Qt::QueuedConnection);
    });
    splash.show();
    app::readAhead(arguments.join(QLatin1Char(' ')).remove(QLatin1Char('"')));
    return QApplication::exec();
}
