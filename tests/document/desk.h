// A session with everything around it, in a temporary folder of its own, driven by steps written as text.
#pragma once

#include "stand_ins.h"

#include <QTemporaryDir>

namespace document_test {

// What stands between " | ".
inline QStringList linesOf(const char *lines)
{
    return QString::fromUtf8(lines).split(QStringLiteral(" | "));
}

// Steps, parted by " | ":
//   file NAME=TEXT, dir NAME, remove NAME   make or remove a file or folder beside the documents
//   link NAME=TARGET                        a symbolic link there
//   meanwhile NAME=TEXT                     the same, while the next file is being parsed
//   start NAME                              start-up with that file on the command line
//   new, open, drop NAME, reload, save, saveas, leave, check
//   normal, xml, preview                    select a tab
//   type TEXT, undo, redo                   in the editor
//   result NAME=TEXT                        made of the document, with a name to propose
//   edit, unedit                            one edit of the DOM, and its undo
//   answer Yes|No|Cancel, choose NAME       queued for the next question or file dialog
// In texts "\n" stands for CR LF, "\l" for LF. A name of "" means an empty choice.
class Desk
{
public:
    Desk();
    ~Desk();

    void run(const QStringList &steps);
    void run(const char *steps) { run(linesOf(steps)); }
    QString path(const QString &name) const { return folder_.filePath(name); }

    // What there is to see under a key: see the table in desk.cpp. Line ends are written as in steps.
    QString seen(const QString &key);

    FakeWorkspace workspace;
    PlainEditor editor;
    FakeBrowser browser;
    AnsweringDialogs dialogs;
    document::Session session;

private:
    void step(const QString &verb, const QString &rest);
    void queueAnswer(const QString &answer);
    void makeFile(const QString &nameAndText);

    QTemporaryDir folder_;
    std::vector<dom::ChangeSet> undo_;
    bool left_ = false;
};

} // namespace document_test
