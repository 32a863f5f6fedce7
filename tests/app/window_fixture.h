// A main window in folders of its own, whose dialogs are answered in advance and whose shell only takes
// notes.
#pragma once

#include "app/main_window.h"
#include "platform/browser/preview_profile.h"
#include "platform/control/code_editor.h"
#include "platform/dialogs/scripted_dialogs.h"
#include "platform/files/user_folders.h"
#include "platform/system/settings_store.h"
#include "platform/system/shell.h"

#include <QStringList>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

namespace app_test {

class NotedShell : public shell::Shell
{
public:
    platform::Result<void> open(const QString &pathOrAddress) override;
    shell::StartedHelper start(const QString &program, const QString &workingFolder) override;
    platform::Result<void> openWindow(const QString &path) override;

    QStringList opened;
    QString refusal; // when not empty, why nothing is opened
};

// Scratch folders for one test: the program's own, the temporary one, and one for documents.
class Folders
{
public:
    Folders();
    QString document(const QString &name) const;
    QString program(const QString &name) const;

private:
    QTemporaryDir whole_;
};

class Window
{
public:
    // Starts as the program does, with these arguments, and shows the window. answers are for what is asked
    // meanwhile.
    explicit Window(const Folders &folders, const QStringList &arguments = {},
                    const QList<dialogs::Answer> &answers = {});
    // In folders of its own, and with a document opened when it has a name.
    explicit Window(const char *name = "", const QByteArray &content = {});
    ~Window();

    QAction *action(const char *name) const;
    // As a click on the menu item. Fails the test when the item is disabled.
    void choose(const char *name);
    void typeIntoEditor(const QString &text);
    void typeAt(int line, int column, const char *text); // in XML Mode, to which it goes
    QTabWidget *tabs() const;
    control::CodeEditor *editor() const;
    QString titleLine() const;
    QString note() const;
    QString treeRoot() const; // the label of the tree's first node
    QString lastMessage() const;

private:
    std::unique_ptr<Folders> own_;
    Window(std::unique_ptr<Folders> own, const Folders *folders);
    void start(const QStringList &arguments);

public:
    const Folders &folders;
    QString path; // of the document it was opened with
    dialogs::ScriptedDialogs dialogs;
    NotedShell shell;
    settings::SettingsStore settings;
    files::UserFolders userFolders;
    std::unique_ptr<app::mainfrm> main;
    bool left = false;
};

QByteArray contentOf(const QString &path);
void write(const QString &path, const QByteArray &content);

// Runs the test object's tests in an application set up as the program's.
int runWindowTests(int argc, char *argv[], QObject &tests);

} // namespace app_test

#define APP_TEST_MAIN(TestClass)                                                                             \
    int main(int argc, char *argv[])                                                                         \
    {                                                                                                        \
        TestClass tests;                                                                                     \
        return app_test::runWindowTests(argc, argv, tests);                                                  \
    }
