// What the Assigned file Preview asks of the program around it.
#pragma once

#include "platform/result.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <memory>

namespace browser {
class PreviewProfile;
}
namespace control {
class CodeEditor;
struct EditorLibrary;
} // namespace control
namespace dialogs {
class Dialogs;
}

namespace editor {

// All of it outlives the dialog, and every function is given.
struct AssignedSource
{
    dialogs::Dialogs &dialogs;
    std::shared_ptr<browser::PreviewProfile> previews;
    std::shared_ptr<control::EditorLibrary> library; // keys and macros, shared with the other editors
    QString PreviewFilePath; // preview files are named by this and a number

    std::function<QString()> previewCopyPath; // of the document
    std::function<QByteArray()> currentText; // of the document, as the view shown has it
    std::function<platform::Result<void>(const QByteArray &text)> writePreviewCopy; // may change its path
    std::function<void(control::CodeEditor &editor)> dress; // as the user has chosen editors to look
    std::function<void(const QString &text)> note; // one line for the status bar
    std::function<void()> closed; // the dialog is gone or going; called once
};

} // namespace editor
