// A field that records the keys pressed in it, one stroke or two in a row.
#pragma once

#include <QBasicTimer>
#include <QKeySequence>
#include <QLineEdit>

namespace editor {

class KeysEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit KeysEdit(QWidget *parent = nullptr);

    const QKeySequence &keys() const { return keys_; }

    // Shows these, and records nothing until the next key.
    void setKeys(const QKeySequence &keys);

    // Whether the next key is recorded; otherwise Tab and Esc do what they do everywhere, and Return asks to
    // assign. Space begins it, a first stroke too; a second stroke ends it, a moment's wait, or leaving the
    // field. Tab, Esc and Return are only recorded after Space.
    bool recording() const { return expected_ != Stroke::None; }

Q_SIGNALS:
    // A stroke was recorded.
    void recorded();
    // The key types a character, or has no name, and so cannot begin a shortcut.
    void refused();
    void assignRequested();

protected:
    bool event(QEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    enum class Stroke
    {
        None,
        First,
        Second
    };

    bool press(QKeyEvent &event);
    bool leaves(const QKeyEvent &event) const;
    bool asksToAssign(const QKeyEvent &event) const;
    void record(const QKeyEvent &event);
    void expect(Stroke stroke);
    void showKeys();

    QKeySequence keys_;
    Stroke expected_ = Stroke::None;
    bool anyKey_ = false; // that is recorded, until the recording ends
    QBasicTimer pause_;
};

} // namespace editor
