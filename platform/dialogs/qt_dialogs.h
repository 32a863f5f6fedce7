// The dialogs that people see.
#pragma once

#include "platform/dialogs/dialogs.h"

#include <QPointer>
#include <QWidget>

class QFileDialog;

namespace dialogs {

class QtDialogs : public Dialogs
{
public:
    // The window that dialogs stand over when no other dialog is open; may be destroyed before this.
    void setParentWindow(QWidget *window) { window_ = window; }

    Answer message(Icon icon, Buttons buttons, const QString &text, const QString &title = {}) override;

    // Opening does not insist that the file exists, and saving does not ask about overwriting: the program
    // has its own words for both.
    QString openFile(const QString &title, const QString &filter) override;
    QString saveFile(const QString &title, const QString &filter, const QString &proposed) override;
    void beginIn(const QString &folder) override { folder_ = folder; }

private:
    QWidget *parent() const;
    QString run(QFileDialog &dialog);

    QPointer<QWidget> window_;
    QString folder_; // where the next file dialog begins; empty for wherever the program was started
};

} // namespace dialogs
