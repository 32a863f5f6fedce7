// Recording and playing macros, and the repeat count: what an editor's commands 187 and 213 to 223 do.
#pragma once

#include "editor/play_progress.h"
#include "platform/control/macro_recorder.h"

#include <QMap>
#include <QObject>
#include <QPointer>
#include <functional>

namespace control {
class CodeEditor;
}

namespace editor {

class MacroServices : public QObject
{
    Q_OBJECT

public:
    using Note = std::function<void(const QString &)>;

    // For as long as it lives the editor's commands are carried out here. note takes what was refused or
    // ended early and why, one line for the status bar. The editor must outlive the object.
    MacroServices(control::CodeEditor &editor, QWidget *dialogParent, const Note &note);
    ~MacroServices() override;

    bool recording() const { return recorder_.recording(); }

    // What the status bar says meanwhile: "Recording a macro: 12 steps (… stops)", "Repeat: 5",
    // or nothing.
    QString stateText() const;

Q_SIGNALS:
    void stateChanged(const QString &text);

private:
    QString recordingText() const;
    bool record();
    bool keep(const control::Macro &recorded);
    bool askRepeatCount();
    bool play(int slot);
    const control::Macro *readied(int slot);
    void refuse(const QString &why);
    bool goOn(const control::PlayReport &report);
    void playEnded(const control::PlayReport &report);
    void stepped(const control::Step &step);
    void tellState();

    control::CodeEditor &editor_;
    QPointer<QWidget> dialogParent_;
    Note note_;
    control::MacroRecorder recorder_;
    PlayProgress progress_;
    QMap<int, control::Macro> readied_; // the macros of the play under way
    QString playing_; // its name
    QString refusal_; // why it cannot go on
    int lastUsed_ = 0;
    int lastCount_ = 2;
};

} // namespace editor
