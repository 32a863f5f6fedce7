#include "desk.h"

#include "platform/files/file_helpers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <functional>
#include <map>

using namespace Qt::StringLiterals;

namespace document_test {

static QByteArray spelledOut(QString text)
{
    return text.replace(u"\\n"_s, u"\r\n"_s).replace(u"\\l"_s, u"\n"_s).toUtf8();
}

static QString spelledShort(const QByteArray &text)
{
    return QString::fromUtf8(text).replace(u"\r\n"_s, u"\\n"_s).replace(u"\n"_s, u"\\l"_s);
}

static QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(no file)");
}

Desk::Desk() : session({workspace, editor, browser, dialogs, files::programFolder()})
{
    workspace.session = &session;
    dialogs.workspace = &workspace;
    QDir(folder_.path()).mkdir(u"tmp"_s);
    qputenv("TMPDIR", path(u"tmp"_s).toUtf8());
}

Desk::~Desk() { qunsetenv("TMPDIR"); }

void Desk::run(const QStringList &steps)
{
    for (const QString &line : steps)
        step(line.section(u' ', 0, 0), line.section(u' ', 1));
}

void Desk::step(const QString &verb, const QString &rest)
{
    auto &life = session.life();
    auto &dom = session.state().Document;
    const std::map<QString, std::function<void()>> verbs{
        {u"file"_s, [&] { makeFile(rest); }},
        {u"meanwhile"_s, [&] { workspace.meanwhile = [this, rest] { makeFile(rest); }; }},
        {u"remove"_s, [&] { QFile::remove(path(rest)) || QDir(path(rest)).removeRecursively(); }},
        {u"start"_s, [&] { life.prelodr(rest.isEmpty() ? QString() : path(rest)); }},
        {u"link"_s, [&] { QVERIFY(QFile::link(rest.section(u'=', 1), path(rest.section(u'=', 0, 0)))); }},
        {u"dir"_s, [&] { QDir(folder_.path()).mkpath(rest); }},
        {u"new"_s, [&] { life.newDocument(); }},
        {u"open"_s, [&] { life.open(); }},
        {u"drop"_s, [&] { life.openPath(path(rest)); }},
        {u"save"_s, [&] { session.saving().save(); }},
        {u"saveas"_s, [&] { session.saving().saveAs(); }},
        {u"reload"_s, [&] { QVERIFY(life.reload()); }},
        {u"leave"_s, [&] { left_ = life.leave(); }},
        {u"check"_s, [&] { session.parsing().xmlerr(true, true); }},
        {u"normal"_s, [&] { workspace.selectTab(document::NormalMode); }},
        {u"xml"_s, [&] { workspace.selectTab(document::XmlMode); }},
        {u"preview"_s, [&] { workspace.selectTab(document::Preview); }},
        {u"type"_s, [&] { editor.replaceText(spelledOut(rest)); }},
        {u"undo"_s, [&] { editor.undo(); }},
        {u"redo"_s, [&] { editor.redo(); }},
        {u"result"_s,
         [&] {
             session.succession().follow(spelledOut(rest.section(u'=', 1)), path(rest.section(u'=', 0, 0)));
         }},
        {u"edit"_s,
         [&] {
             dom.beginCommand();
             (void)dom.setAttribute(dom.documentElement(), u"x"_s, u"1"_s);
             undo_.push_back(dom.endCommand());
         }},
        {u"unedit"_s,
         [&] {
             dom.revert(undo_.back());
             undo_.pop_back();
         }},
        {u"answer"_s, [&] { queueAnswer(rest); }},
        {u"choose"_s, [&] { dialogs.choices.append(rest.isEmpty() ? rest : path(rest)); }},
    };
    const auto found = verbs.find(verb);
    if (found == verbs.end())
        qFatal("no such step: %s", qPrintable(verb));
    found->second();
}

void Desk::queueAnswer(const QString &answer)
{
    using dialogs::Answer;
    dialogs.answers.append(answer == QLatin1String("Yes")      ? Answer::Yes
                               : answer == QLatin1String("No") ? Answer::No
                                                               : Answer::Cancel);
}

void Desk::makeFile(const QString &nameAndText)
{
    const QString name = nameAndText.section(u'=', 0, 0);
    QDir(folder_.path()).mkpath(QFileInfo(name).path());
    QFile file(path(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(spelledOut(nameAndText.section(u'=', 1)));
}

QString Desk::seen(const QString &key)
{
    auto &state = session.state();
    const auto text = [](const QByteArray &bytes) { return spelledShort(bytes); };
    const auto number = [](qint64 value) { return QString::number(value); };
    const std::map<QString, std::function<QString()>> keys{
        {u"tab"_s, [&] { return number(workspace.tab); }},
        {u"tag"_s, [&] { return number(state.TabTag); }},
        {u"modes"_s, [&] { return workspace.modes; }},
        {u"menus"_s, [&] { return number(workspace.menusFor); }},
        {u"errors"_s, [&] { return number(state.HasParseErrors); }},
        {u"line"_s, [&] { return number(editor.highlightedLine()); }},
        {u"rebuilds"_s, [&] { return number(workspace.rebuilds); }},
        {u"reads"_s, [&] { return number(editor.reads); }},
        {u"changed"_s, [&] { return number(session.saving().isChanged()); }},
        {u"notes"_s, [&] { return number(workspace.notes.size()); }},
        {u"messages"_s, [&] { return number(dialogs.messages.size()); }},
        {u"message"_s,
         [&] { return dialogs.messages.isEmpty() ? QString() : text(dialogs.messages.last().toUtf8()); }},
        {u"proposed"_s, [&] { return QFileInfo(dialogs.proposed).fileName(); }},
        {u"unanswered"_s, [&] { return dialogs.unanswered.join(u'|'); }},
        {u"told"_s, [&] { return QString(workspace.ofFile).replace(folder_.path(), u"~"_s); }},
        {u"left"_s, [&] { return number(left_); }},
        {u"undo"_s, [&] { return number(editor.canUndo()); }},
        {u"editor"_s, [&] { return text(editor.text()); }},
        {u"dom"_s, [&] { return text(state.Document.xml()); }},
        {u"name"_s, [&] { return QFileInfo(state.CurrentFilePath).fileName(); }},
        {u"overtaken"_s, [&] { return number(state.stamp != files::stampOf(state.CurrentFilePath)); }},
        {u"title"_s, [&] { return session.saving().documentName(); }},
        {u"given"_s, [&] { return workspace.givenUp.join(u'|'); }},
        {u"new"_s, [&] { return number(session.files().istmppath()); }},
        {u"copy"_s, [&] { return QFileInfo(state.previewCopyPath()).fileName(); }},
        {u"shown"_s, [&] { return text(browser.shown); }},
        {u"browser"_s, [&] { return QFileInfo(browser.navigated).fileName(); }},
        {u"asign"_s, [&] { return number(workspace.assignedClosed); }},
    };
    if (key.startsWith(u'/'))
        return text(contentOf(path(key.mid(1))));
    const auto found = keys.find(key);
    if (found == keys.end())
        qFatal("no such key: %s", qPrintable(key));
    return found->second();
}

} // namespace document_test
