// The windows around a session, without windows: each remembers what it was asked to do.
#pragma once

#include "document/session.h"

#include <QList>
#include <QStringList>

#include <functional>

namespace document_test {

class PlainEditor : public control::EditorControl
{
public:
    QByteArray text() const override
    {
        ++reads;
        return text_;
    }
    QByteArray textInPlace() const override { return text(); }
    quint64 revision() const override { return revision_; }
    void loadText(const QByteArray &utf8) override
    {
        undo_.clear();
        redo_.clear();
        set(utf8);
    }
    void replaceText(const QByteArray &utf8) override { replaceDocument(utf8, -1); }
    void replaceDocument(const QByteArray &utf8, int number) override
    {
        undo_.append({text_, number});
        redo_.clear();
        set(utf8);
    }
    void tellCrossing(Crossed told) override { crossed_ = std::move(told); }
    bool canUndo() const override { return !undo_.isEmpty(); }
    bool canRedo() const override { return !redo_.isEmpty(); }
    void undo() override { travel(undo_, redo_, true); }
    void redo() override { travel(redo_, undo_, false); }
    int highlightedLine() const override { return highlighted_; }
    void setHighlightedLine(int line) override { highlighted_ = line; }
    void placeCaret(int line, int column) override
    {
        line_ = line;
        column_ = column;
    }
    int caretLine() const override { return line_; }
    int caretColumn() const override { return column_; }
    void setLanguage(control::Language wanted) override { language = wanted; }
    void giveFocus() override { hasFocus = true; }

    // What the document's life has no use for.
    bool execute(int) override { return false; }
    bool canCut() const override { return false; }
    bool canCopy() const override { return false; }
    bool canPaste() const override { return false; }
    void cut() override { }
    void copy() override { }
    void paste() override { }
    bool whiteSpaceShown() const override { return false; }
    void setWhiteSpaceShown(bool) override { }
    void replaceSelection(const QByteArray &) override { }

    mutable int reads = 0; // how often the whole text was asked for
    bool hasFocus = false;
    control::Language language = control::Language::Plain;

private:
    void set(const QByteArray &utf8)
    {
        text_ = utf8;
        ++revision_;
        highlighted_ = -1;
    }

    using Steps = QList<std::pair<QByteArray, int>>; // the other text, and the number of another document's

    void travel(Steps &from, Steps &to, bool undone)
    {
        const auto [text, number] = from.takeLast();
        to.append({text_, number});
        set(text);
        if (number >= 0 && crossed_)
            crossed_(number, undone);
    }

    QByteArray text_;
    Steps undo_;
    Steps redo_;
    Crossed crossed_;
    quint64 revision_ = 0;
    int highlighted_ = -1;
    int line_ = 0;
    int column_ = 0;
};

class FakeWorkspace : public document::Workspace
{
public:
    int currentTab() const override { return tab; }
    void selectTab(int wanted) override
    {
        if (wanted == tab)
            return;
        const int previous = std::exchange(tab, wanted);
        session->views().enteredTab(wanted, previous);
    }
    void documentGoing() override
    {
        std::exchange(meanwhile, [] {})();
    }
    void textGivenUp(const QByteArray &text) override { givenUp.append(QString::fromUtf8(text)); }
    void rebuildTree() override { ++rebuilds; }
    void setTitleLine(const QString &text) override { title = text; }
    void note(const QString &text) override { notes.append(text); }
    void fileNote(const QString &text) override { ofFile = text; }
    void setModesEnabled(bool normal, bool xml, bool preview) override
    {
        modes = QStringLiteral("%1%2%3").arg(int(normal)).arg(int(xml)).arg(int(preview));
    }
    void showMenusFor(int shownTab) override { menusFor = shownTab; }
    void layOut() override { }
    void enterEditor() override { ++editorEntries; }
    void closeAssignedPreview() override { ++assignedClosed; }
    void openPage(const QString &path) override { pages.append(path); }
    void showBusy(bool busy) override { busyDepth += busy ? 1 : -1; }
    std::function<bool()> patience() override
    {
        return [this] { return isPatient; };
    }

    document::Session *session = nullptr;
    std::function<void()> meanwhile = [] {}; // done once, between reading a file and parsing it
    int tab = 0;
    int rebuilds = 0;
    QString title;
    bool isPatient = true; // else the user stops whatever takes longer
    QStringList notes;
    QString ofFile;
    QString modes;
    int menusFor = 0;
    int editorEntries = 0;
    int assignedClosed = 0;
    QStringList givenUp;
    QStringList pages;
    int busyDepth = 0;
};

class FakeBrowser : public browser::Browser
{
public:
    void setSilent(bool wanted) override { silent = wanted; }
    void navigate(const QString &path) override { navigated = path; }
    void showText(const QByteArray &bytes, const QString &) override { shown = bytes; }
    void back() override { }
    void forward() override { }
    void reload() override { }

    bool silent = false;
    QString navigated;
    QByteArray shown;
};

// Answers in the order given. A question that has no answer waiting is remembered as unanswered.
class AnsweringDialogs : public dialogs::Dialogs
{
public:
    dialogs::Answer message(dialogs::Icon icon, dialogs::Buttons buttons, const QString &text,
                            const QString &) override
    {
        messages.append(text);
        icons.append(icon);
        if (workspace->busyDepth != 0)
            unanswered.append(QStringLiteral("asked under a busy pointer: ") + text);
        if (buttons == dialogs::Buttons::Ok)
            return dialogs::Answer::Ok;
        if (answers.isEmpty()) {
            unanswered.append(text);
            return dialogs::Answer::Cancel;
        }
        return answers.takeFirst();
    }
    QString openFile(const QString &title, const QString &) override { return choice(title); }
    QString saveFile(const QString &title, const QString &, const QString &path) override
    {
        proposed = path;
        return choice(title);
    }

    const FakeWorkspace *workspace = nullptr;
    QList<dialogs::Answer> answers;
    QStringList choices;
    QString proposed; // by the last dialog for saving
    QStringList messages;
    QList<dialogs::Icon> icons;
    QStringList unanswered;

private:
    QString choice(const QString &title)
    {
        if (!choices.isEmpty())
            return choices.takeFirst();
        unanswered.append(title);
        return {};
    }
};

} // namespace document_test
