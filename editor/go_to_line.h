// Asks for a line of an editor's text and goes there.
#pragma once

#include <QDialog>
#include <optional>

class QLabel;
class QLineEdit;
class QPushButton;

namespace control {
class CodeEditor;
}

namespace editor {

// Counted from zero.
struct LinePlace
{
    int line = 0;
    int column = 0;

    bool operator==(const LinePlace &) const = default;
};

// What "12", "12:5", "+3" or "-3" mean, of lines numbered from 1, for somebody on the current line (from
// zero). Steps end at the first and the last line; nothing for a line that does not exist, or for anything
// else.
std::optional<LinePlace> placeAskedFor(const QString &text, int currentLine, int lineCount);

class frmGotoLine : public QDialog
{
    Q_OBJECT

public:
    frmGotoLine(int currentLine, int lineCount, QWidget *parent);

    // Where to go, once accepted.
    LinePlace place() const { return place_; }

private:
    void judge();

    int currentLine_;
    int lineCount_;
    LinePlace place_;
    QLineEdit *txtLine;
    QLabel *lblRange;
    QPushButton *OKButton;
};

// Shows the dialog over parent, modal, and goes to the line. False when the user went nowhere.
bool goToLine(control::CodeEditor &editor, QWidget *parent);

} // namespace editor
