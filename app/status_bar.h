// The status bar: the title line, a note of what was not done and why, and the state of text and caret.
#pragma once

#include <QLabel>
#include <QStatusBar>
#include <QToolButton>

namespace app {

// A line of text that gives way in a narrow window; whole in its tool tip.
class ElidedLabel : public QLabel
{
public:
    explicit ElidedLabel(QWidget *parent) : QLabel(parent) { }

    void setWhole(const QString &text);
    void setWanted(int width); // pixels, in place of what the whole line takes
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    int wanted_ = 0;
};

class StatusBar : public QStatusBar
{
public:
    explicit StatusBar(QWidget *parent);

    void setTitleLine(const QString &text) { title_->setWhole(text); }

    // Stays until it is replaced; empty clears it.
    void setNote(const QString &text);
    // The same, of the document's file. Shown when there is no other note, and so again when that is cleared.
    void setFileNote(const QString &text);

    // What the editor is busy with by itself, such as recording; empty for nothing.
    void setActivity(const QString &text) { show(activity_, text); }
    // A red dot before it.
    void setRecording(bool recording) { recording_->setVisible(recording); }
    // Where the caret is; empty where there is none.
    void setCaret(const QString &text) { show(caret_, text); }
    // How the document stands in its file; either may be empty.
    void setForm(const QString &encoding, const QString &lineEnd);

    // Shows the encoding; clicked, to have it changed.
    QAbstractButton &encoding() { return *encoding_; }

private:
    QLabel *addPanel(const char *name, const QString &tip);
    void addRecording();
    void addEncoding();
    void showNote();
    static void show(QLabel *panel, const QString &text);

    ElidedLabel *title_;
    ElidedLabel *note_;
    QString passing_;
    QString ofFile_;
    QLabel *recording_;
    QLabel *activity_;
    QLabel *caret_;
    QToolButton *encoding_;
    QLabel *lineEnd_;
};

} // namespace app
