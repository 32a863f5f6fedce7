#include "desk.h"

#include "platform/files/file_helpers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <functional>
#include <map>

namespace document_test {

static QByteArray spelledOut(QString text)
{
    return text.replace(QStringLiteral("\\n"), QStringLiteral("\r\n"))
        .replace(QStringLiteral("\\l"), QStringLiteral("\n"))
        .toUtf8();
}

static QString spelledShort(const QByteArray &text)
{
    return QString::fromUtf8(text)
        .replace(QStringLiteral("\r\n"), QStringLiteral("\\n"))
        .replace(QStringLiteral("\n"), QStringLiteral("\\l"));
}

static QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(no file)");
}

QStringList linesOf(std::initializer_list<const char *> lines)
{
    QStringList result;
    for (const char *line : lines)
        result.append(QString::fromUtf8(line));
    return result;
}

Desk::Desk() : session({workspace, editor, browser, dialogs, files::programFolder()})
{
    workspace.session = &session;
    dialogs.workspace = &workspace;
    QDir(folder_.path()).mkdir(QStringLiteral("tmp"));
    qputenv("TMPDIR", path(QStringLiteral("tmp")).toUtf8());
}

Desk::~Desk() { qunsetenv("TMPDIR"); }

void Desk::run(const QStringList &steps)
{
    for (const QString &line : steps)
        step(line.section(QLatin1Char(' '), 0, 0), line.section(QLatin1Char(' '), 1));
}

void Desk::run(std::initializer_list<const char *> steps) { run(linesOf(steps)); }

void Desk::step(const QString &verb, const QString &rest)
{
    auto &life = session.life();
    auto &dom = session.state().Document;
    const std::map<QString, std::function<void()>> verbs{
        {QStringLiteral("file"), [&] { makeFile(rest); }},
        {QStringLiteral("remove"),
         [&] { QFile::remove(path(rest)) || QDir(path(rest)).removeRecursively(); }},
        {QStringLiteral("start"),
         [&] { life.prelodr(rest.isEmpty() ? QStringList() : QStringList{path(rest)}); }},
        {QStringLiteral("new"), [&] { life.newDocument(); }},
        {QStringLiteral("open"), [&] { life.open(); }},
        {QStringLiteral("drop"), [&] { life.openPath(path(rest)); }},
        {QStringLiteral("save"), [&] { session.saving().save(); }},
        {QStringLiteral("saveas"), [&] { session.saving().saveAs(); }},
        {QStringLiteral("leave"), [&] { left_ = life.leave(); }},
        {QStringLiteral("check"), [&] { session.parsing().xmlerr(true, true); }},
        {QStringLiteral("normal"), [&] { workspace.selectTab(document::NormalMode); }},
        {QStringLiteral("xml"), [&] { workspace.selectTab(document::XmlMode); }},
        {QStringLiteral("preview"), [&] { workspace.selectTab(document::Preview); }},
        {QStringLiteral("type"), [&] { editor.replaceText(spelledOut(rest)); }},
        {QStringLiteral("undo"), [&] { editor.undo(); }},
        {QStringLiteral("edit"),
         [&] {
             dom.beginCommand();
             (void)dom.setAttribute(dom.documentElement(), QStringLiteral("x"), QStringLiteral("1"));
             undo_.push_back(dom.endCommand());
         }},
        {QStringLiteral("unedit"),
         [&] {
             dom.revert(undo_.back());
             undo_.pop_back();
         }},
        {QStringLiteral("answer"), [&] { queueAnswer(rest); }},
        {QStringLiteral("choose"), [&] { dialogs.choices.append(rest.isEmpty() ? rest : path(rest)); }},
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
    const QString name = nameAndText.section(QLatin1Char('='), 0, 0);
    QDir(folder_.path()).mkpath(QFileInfo(name).path());
    QFile file(path(name));
    if (file.open(QIODevice::WriteOnly))
        file.write(spelledOut(nameAndText.section(QLatin1Char('='), 1)));
}

QString Desk::seen(const QString &key)
{
    auto &state = session.state();
    const auto text = [](const QByteArray &bytes) { return spelledShort(bytes); };
    const auto number = [](qint64 value) { return QString::number(value); };
    const std::map<QString, std::function<QString()>> keys{
        {QStringLiteral("tab"), [&] { return number(workspace.tab); }},
        {QStringLiteral("tag"), [&] { return number(state.TabTag); }},
        {QStringLiteral("modes"), [&] { return workspace.modes; }},
        {QStringLiteral("menus"), [&] { return number(workspace.menusFor); }},
        {QStringLiteral("errors"), [&] { return number(state.HasParseErrors); }},
        {QStringLiteral("line"), [&] { return number(editor.highlightedLine()); }},
        {QStringLiteral("rebuilds"), [&] { return number(workspace.rebuilds); }},
        {QStringLiteral("reads"), [&] { return number(editor.reads); }},
        {QStringLiteral("notes"), [&] { return number(workspace.notes.size()); }},
        {QStringLiteral("messages"), [&] { return number(dialogs.messages.size()); }},
        {QStringLiteral("message"),
         [&] { return dialogs.messages.isEmpty() ? QString() : text(dialogs.messages.last().toUtf8()); }},
        {QStringLiteral("unanswered"), [&] { return dialogs.unanswered.join(QLatin1Char('|')); }},
        {QStringLiteral("save"), [&] { return number(workspace.saveEnabled); }},
        {QStringLiteral("left"), [&] { return number(left_); }},
        {QStringLiteral("undo"), [&] { return number(editor.canUndo()); }},
        {QStringLiteral("editor"), [&] { return text(editor.text()); }},
        {QStringLiteral("dom"), [&] { return text(state.Document.xml()); }},
        {QStringLiteral("name"), [&] { return QFileInfo(state.CurrentFilePath).fileName(); }},
        {QStringLiteral("new"), [&] { return number(session.files().istmppath()); }},
        {QStringLiteral("copy"), [&] { return QFileInfo(state.previewCopyPath()).fileName(); }},
        {QStringLiteral("shown"), [&] { return text(browser.shown); }},
        {QStringLiteral("browser"), [&] { return QFileInfo(browser.navigated).fileName(); }},
        {QStringLiteral("asign"), [&] { return number(workspace.assignedClosed); }},
    };
    if (key.startsWith(QLatin1Char('/')))
        return text(contentOf(path(key.mid(1))));
    const auto found = keys.find(key);
    if (found == keys.end())
        qFatal("no such key: %s", qPrintable(key));
    return found->second();
}

} // namespace document_test
