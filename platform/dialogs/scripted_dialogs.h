// Dialogs for tests: answered in advance, and on record. Nothing is shown and nothing waits.
#pragma once

#include "platform/dialogs/dialogs.h"

#include <QList>
#include <QStringList>

namespace dialogs {

// One message box as it was asked for.
struct AskedMessage
{
    Icon icon;
    Buttons buttons;
    QString text;
    QString title; // empty for the program's
};

// One file dialog as it was asked for.
struct AskedFile
{
    QString title;
    QString filter;
    QString proposed; // empty when opening
};

class ScriptedDialogs : public Dialogs
{
public:
    // What the next box without an answer gets. An answer that the box does not offer counts as none.
    void answer(Answer answer) { answers_.append(answer); }

    // What the next file dialog returns; empty for one that is dismissed.
    void answerFile(const QString &path) { paths_.append(path); }

    Answer message(Icon icon, Buttons buttons, const QString &text, const QString &title = {}) override;
    QString openFile(const QString &title, const QString &filter) override;
    QString saveFile(const QString &title, const QString &filter, const QString &proposed) override;

    const QList<AskedMessage> &messages() const { return messages_; }
    const QList<AskedFile> &files() const { return files_; }

    // The texts and titles of what nobody answered. A test that expects every dialog checks that it is
    // empty; such a dialog was answered with what does least.
    const QStringList &unanswered() const { return unanswered_; }

    // How many answers are still waiting for their dialog.
    qsizetype left() const { return answers_.size() + paths_.size(); }

private:
    QString nextPath(const AskedFile &asked);

    QList<Answer> answers_;
    QStringList paths_;
    QList<AskedMessage> messages_;
    QList<AskedFile> files_;
    QStringList unanswered_;
};

} // namespace dialogs
