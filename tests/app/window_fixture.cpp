#include "window_fixture.h"

#include "app/command_line.h"
#include "platform/browser/browser_process.h"

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace app_test {

platform::Result<void> NotedShell::open(const QString &pathOrAddress)
{
    opened.append(pathOrAddress);
    if (!refusal.isEmpty())
        return platform::Failure{refusal};
    return {};
}

shell::StartedHelper NotedShell::start(const QString &program, const QString &)
{
    const auto noted = open(program);
    return noted ? shell::StartedHelper(nullptr) : platform::Failure{noted.reason()};
}

platform::Result<void> NotedShell::openWindow(const QString &path) { return open(u"window "_s + path); }

// Where the first of them are: the folder that is named by now may be that of others, which has gone.
static QString place()
{
    static const QString first = QDir::tempPath();
    return first;
}

Folders::Folders() : whole_(QDir(place()).filePath(u"window-XXXXXX"_s))
{
    QDir whole(whole_.path());
    for (const char *name : {"program/tdyex", "temporary", "documents"})
        whole.mkpath(QString::fromLatin1(name));
    qputenv("XMLEDITOR_PROGRAM_FOLDER", QFile::encodeName(whole.filePath(u"program"_s)));
    qputenv("TMPDIR", QFile::encodeName(whole.filePath(u"temporary"_s)));
}

QString Folders::document(const QString &name) const { return whole_.filePath(u"documents/"_s + name); }

QString Folders::program(const QString &name) const { return whole_.filePath(u"program/"_s + name); }

Window::Window(std::unique_ptr<Folders> own, const Folders *others)
    : own_(std::move(own)), folders(others ? *others : *own_), settings(folders.program(u"settings.ini"_s)),
      userFolders(folders.program({}))
{
    static const auto previews = browser::warmUp();
    main = std::make_unique<app::mainfrm>(app::Outside{dialogs, shell, settings, userFolders, previews});
    QObject::connect(main.get(), &app::mainfrm::left, main.get(), [this] { left = true; });
}

Window::Window(const Folders &others, const QStringList &arguments, const QList<dialogs::Answer> &answers)
    : Window(nullptr, &others)
{
    for (const dialogs::Answer answer : answers)
        dialogs.answer(answer);
    start(arguments);
}

Window::Window(const char *name, const QByteArray &content) : Window(std::make_unique<Folders>(), nullptr)
{
    path = folders.document(QString::fromUtf8(name));
    if (*name != 0)
        write(path, content);
    start(*name != 0 ? QStringList{path} : QStringList());
}

void Window::start(const QStringList &arguments)
{
    main->prelodr(app::readCommandLine(arguments).documents.value(0));
    main->show();
    main->activateWindow();
}

Window::~Window()
{
    if (!dialogs.unanswered().isEmpty())
        QTest::qFail(qPrintable(u"nobody answered: "_s + dialogs.unanswered().join(u'|')), __FILE__,
                     __LINE__);
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

void Window::typeAt(int line, int column, const char *text)
{
    if (tabs()->currentIndex() != 1)
        choose("mnuxmlmode");
    editor()->placeCaret(line, column);
    typeIntoEditor(QString::fromUtf8(text));
}

QTabWidget *Window::tabs() const { return main->findChild<QTabWidget *>(u"SSTab1"_s); }

control::CodeEditor *Window::editor() const { return main->findChild<control::CodeEditor *>(u"CodeMax1"_s); }

QString Window::titleLine() const { return main->findChild<QLabel *>(u"Panel1"_s)->text(); }

QString Window::note() const { return main->findChild<QLabel *>(u"Note"_s)->text(); }

QString Window::treeRoot() const
{
    const auto *model = main->findChild<QTreeView *>(u"TreeView1"_s)->model();
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
