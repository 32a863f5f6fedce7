#include "window_fixture.h"

#include "platform/browser/browser_process.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTreeView>

namespace app_test {

platform::Result<void> NotedShell::open(const QString &pathOrAddress)
{
    opened.append(pathOrAddress);
    if (!refusal.isEmpty())
        return platform::Failure{refusal};
    return {};
}

platform::Result<void> NotedShell::start(const QString &program, const QString &) { return open(program); }

Folders::Folders()
{
    QDir whole(whole_.path());
    for (const char *name : {"program/tdyex", "temporary", "documents"})
        whole.mkpath(QString::fromLatin1(name));
    qputenv("XMLEDITOR_PROGRAM_FOLDER", QFile::encodeName(whole.filePath(QStringLiteral("program"))));
    qputenv("TMPDIR", QFile::encodeName(whole.filePath(QStringLiteral("temporary"))));
}

QString Folders::document(const QString &name) const
{
    return whole_.filePath(QStringLiteral("documents/") + name);
}

QString Folders::program(const QString &name) const
{
    return whole_.filePath(QStringLiteral("program/") + name);
}

Window::Window(const Folders &folders, const QStringList &arguments, const QList<dialogs::Answer> &answers)
    : settings(folders.program(QStringLiteral("settings.ini"))), userFolders(folders.program(QString()))
{
    for (const dialogs::Answer answer : answers)
        dialogs.answer(answer);
    static const auto previews = browser::warmUp();
    main = std::make_unique<app::mainfrm>(app::Outside{dialogs, shell, settings, userFolders, previews});
    QObject::connect(main.get(), &app::mainfrm::left, main.get(), [this] { left = true; });
    main->prelodr(arguments);
    main->show();
    main->activateWindow();
}

Window::~Window()
{
    if (!dialogs.unanswered().isEmpty())
        QTest::qFail(
            qPrintable(QStringLiteral("nobody answered: ") + dialogs.unanswered().join(QLatin1String(" | "))),
            __FILE__, __LINE__);
    if (dialogs.left() != 0)
        QTest::qFail("an expected dialog did not come", __FILE__, __LINE__);
}

QAction *Window::action(const char *name) const { return main->commands().action(QString::fromLatin1(name)); }

void Window::choose(const char *name)
{
    QVERIFY2(action(name) != nullptr, name);
    QVERIFY2(action(name)->isEnabled(), name);
    action(name)->trigger();
}

void Window::typeIntoEditor(const QString &text)
{
    editor()->setFocus();
    QTest::keyClicks(editor(), text);
}

QTabWidget *Window::tabs() const { return main->findChild<QTabWidget *>(QStringLiteral("SSTab1")); }

control::CodeEditor *Window::editor() const
{
    return main->findChild<control::CodeEditor *>(QStringLiteral("CodeMax1"));
}

QString Window::titleLine() const { return main->findChild<QLabel *>(QStringLiteral("Panel1"))->text(); }

QString Window::note() const { return main->findChild<QLabel *>(QStringLiteral("Note"))->text(); }

QString Window::treeRoot() const
{
    const auto *model = main->findChild<QTreeView *>(QStringLiteral("TreeView1"))->model();
    return model->index(0, 0).data().toString();
}

QString Window::lastMessage() const
{
    return dialogs.messages().isEmpty() ? QString() : dialogs.messages().last().text;
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

void write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    QVERIFY2(file.open(QIODevice::WriteOnly) && file.write(content) == content.size(), qPrintable(path));
}

int runWindowTests(int argc, char *argv[], QObject &tests)
{
    browser::prepareProcess();
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return QTest::qExec(&tests, argc, argv);
}

} // namespace app_test
