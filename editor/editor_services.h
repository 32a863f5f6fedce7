// What a code editor offers besides editing: find and replace, macros, its properties. One object serves one
// editor, whatever window that stands in.
#pragma once

#include "editor/macro_services.h"

#include <QObject>
#include <QPointer>

namespace editor {

class FindBar;
class FindMemory;
class PropertiesDialog;

class EditorServices : public QObject
{
    Q_OBJECT

public:
    using Note = std::function<void(const QString &)>;

    // Editor and memory outlive this. note takes what could not be done, one line for the status bar.
    EditorServices(control::CodeEditor &editor, FindMemory &memory, const Note &note,
                   QObject *parent = nullptr);
    ~EditorServices() override;

    // To be placed below the editor; hidden until something is to be found.
    QWidget *findBar() const;

    // Whether what is done in the editor is recorded now; activityChanged tells when that changes.
    bool recording() const { return macros_.recording(); }

Q_SIGNALS:
    // What the editor is busy with by itself, for the status bar; empty for nothing.
    void activityChanged(const QString &text);

private:
    bool showProperties();

    control::CodeEditor &editor_;
    QPointer<FindBar> findBar_; // belongs to the window it is placed in
    QPointer<PropertiesDialog> properties_; // made at first use; belongs to the editor's window
    MacroServices macros_;
};

} // namespace editor
