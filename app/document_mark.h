// What the window tells about its document besides the title line: its name and whether it is changed, in the
// window's title; the caret's place, the encoding and the line ends, in the status bar.
#pragma once

#include <QObject>
#include <QTimer>

class QWidget;

namespace control {
class CodeEditor;
}
namespace document {
class Session;
}

namespace app {

class StatusBar;

class DocumentMark : public QObject
{
public:
    // All of it outlives this.
    struct Around
    {
        QWidget &window;
        StatusBar &bar;
        document::Session &session;
        control::CodeEditor &editor;
    };

    explicit DocumentMark(const Around &around);

    // Another document, another view, or the document was saved.
    void refresh();

    // Something was edited: told at once as a change. Whether the text came back to what was saved is
    // looked up a little later, where that costs little.
    void edited();

    void caretMoved();

private:
    void showName();
    void showCaret();
    void showForm();
    void settle();

    Around around_;
    QTimer later_;
};

} // namespace app
