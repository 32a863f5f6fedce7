#include "document/life.h"

#include "document/encoding_report.h"
#include "document/language.h"
#include "platform/files/atomic_write.h"
#include "platform/files/file_helpers.h"

#include <array>

namespace document {

void Life::prelodr(const QString &document)
{
    const QString named = document.isEmpty() ? document : files::fullPath(document);
    const QString workingFile = files_.makefile();
    state_.TabTag = NormalMode;
    around_.editor.setLanguage(control::Language::Xml);
    clearEditor();
    if (named.isEmpty() || !openNamed(named))
        beginAnew(workingFile);
}

// False when there is something of that name that cannot be opened, which is reported.
bool Life::openNamed(const QString &path)
{
    const auto found = files::stampOf(path);
    if (found && !found->exists && !path.endsWith(QLatin1Char('/'))) {
        beginAnew(path);
        return true;
    }
    const auto file = parsing_.readFile(path);
    if (file)
        take(path, *file);
    return file.has_value();
}

void Life::loadAs(const QString &path, const files::LoadedText &file)
{
    files_.setCurrentFile(path);
    around_.editor.setLanguage(languageOf(path, file.utf8));
    takeForm(file);
    parsing_.Loadpathxml(file);
}

// How the current file was when it was read, and what is to be told of that.
void Life::takeForm(const files::LoadedText &file)
{
    setForm(file.form);
    state_.stamp = file.stamp;
    const QString former = files::leftOfCutShort(state_.CurrentFilePath);
    around_.workspace.fileNote(
        former.isEmpty() ? file.note
                         : QStringLiteral("An unfinished save left the former text in %1.").arg(former));
}

void Life::setForm(const files::FileForm &form)
{
    state_.form = form;
    state_.encodingKept = false;
    state_.accepted.reset(); // which counted for the former encoding
    around_.editor.showBytes(form.encoding.block);
}

void Life::beginAnew(const QString &path)
{
    files_.setCurrentFile(path);
    setForm({});
    state_.stamp = {};
    around_.editor.setLanguage(languageOf(path, newDocumentTemplate()));
    around_.workspace.fileNote({});
    parsing_.LoadXml(newDocumentTemplate());
    saving_.rememberDom();
    saving_.showTitle();
}

void Life::newDocument()
{
    if (saving_.cndsavefunc())
        return;
    clearEditor();
    around_.workspace.selectTab(NormalMode);
    files_.kiltmpfyl();
    beginAnew(files_.makefile());
}

void Life::open()
{
    for (;;) {
        const QString chosen = around_.dialogs.openFile(QStringLiteral("Open"), documentFilter());
        if (chosen.isEmpty())
            return;
        if (files::fileExists(chosen))
            return openExisting(files::fullPath(chosen));
    }
}

void Life::openPath(const QString &path)
{
    const QString fullPath = files::fullPath(path);
    if (files::fileExists(fullPath))
        openExisting(fullPath);
    else
        parsing_.readFile(fullPath); // reports why it cannot be opened
}

// The file is read after the question, which may just have saved to it, and before anything is let go.
void Life::openExisting(const QString &path)
{
    if (saving_.cndsavefunc())
        return;
    const auto file = parsing_.readFile(path);
    if (file)
        take(path, *file);
}

void Life::take(const QString &path, const files::LoadedText &file)
{
    leaveViews(path);
    loadAs(path, file);
    saving_.rememberLoaded();
    saving_.showTitle();
}

void Life::clearEditor()
{
    around_.editor.loadText(newDocumentTemplate());
    state_.editorHasText = false;
    succession_.forget();
}

// Nothing of the former document is shown any more, and its preview copy is gone.
void Life::leaveViews(const QString &newPath)
{
    clearEditor();
    around_.workspace.selectTab(NormalMode);
    files_.spare(newPath);
    files_.kiltmpfyl();
}

bool Life::recover(const QString &path, const QByteArray &text, const files::FileForm &form, Tab mode)
{
    if (saving_.cndsavefunc())
        return false;
    leaveViews(path);
    files_.setCurrentFile(path.isEmpty() ? files_.makefile() : path);
    setForm(form);
    takeSpelling();
    around_.workspace.fileNote({});
    around_.editor.setLanguage(languageOf(state_.CurrentFilePath, text));
    keepOver();
    showUnsaved(text, mode);
    saving_.showTitle();
    return true;
}

// The rare ways in which the file writes characters stay what they are.
void Life::takeSpelling()
{
    files::TextEncoding &encoding = state_.form.encoding;
    const auto file = files::readTextFile(state_.CurrentFilePath);
    if (file && file->form.encoding.name == encoding.name && file->form.encoding.block == encoding.block)
        encoding.spelling = file->form.encoding.spelling;
}

// A faulty text was faulty when it was left; there is no need to say so in a box.
void Life::showUnsaved(const QByteArray &text, Tab mode)
{
    const bool faulty = firstFault(text, state_.form.encoding,
                                   dom::checkWellFormed(text, files::parentFolderOf(state_.CurrentFilePath),
                                                        nullptr, around_.workspace.patience()))
                            .has_value();
    parsing_.LoadXml(faulty ? newDocumentTemplate() : text);
    if (faulty || mode == XmlMode)
        around_.workspace.selectTab(XmlMode);
    if (!faulty)
        return;
    around_.editor.loadText(text);
    state_.editorHasText = true;
    parsing_.xmlerr(false, false);
}

bool Life::reload()
{
    const auto file = parsing_.readFile(state_.CurrentFilePath);
    if (!file)
        return false;
    if (saving_.isChanged())
        saving_.giveUp();
    // Undo must not lead back to characters that stood for other bytes than they would now.
    const bool sameBlock = file->form.encoding.block == state_.form.encoding.block;
    if (around_.workspace.currentTab() == XmlMode && sameBlock)
        takeIntoEditor(*file);
    else
        takeAgain(*file);
    return true;
}

bool Life::reopen(const QByteArray &encoding)
{
    const auto file = parsing_.readFile(state_.CurrentFilePath, encoding);
    if (!file)
        return false;
    if (saving_.isChanged())
        saving_.giveUp();
    takeAgain(*file);
    return true;
}

// One edit of what differs, so that the place and the steps back stay.
void Life::takeIntoEditor(const files::LoadedText &file)
{
    takeForm(file);
    around_.editor.replaceText(file.utf8);
    saving_.rememberLoaded();
    parsing_.xmlerr(true, false);
    saving_.showTitle();
}

void Life::takeAgain(const files::LoadedText &file)
{
    const int tab = around_.workspace.currentTab();
    const Tab enteredFrom = state_.TabTag;
    take(state_.CurrentFilePath, file);
    if (tab == NormalMode || state_.HasParseErrors)
        return;
    around_.workspace.selectTab(tab == Preview ? enteredFrom : tab);
    around_.workspace.selectTab(tab);
}

bool Life::fileIsAsSaved() const
{
    return files::isWrittenAs(state_.CurrentFilePath, state_.SavedXml, state_.form);
}

void Life::keepOver()
{
    const auto file = files::readTextFile(state_.CurrentFilePath);
    state_.SavedXml = file ? file->utf8 : QByteArray();
    state_.stamp = file ? file->stamp : files::FileStamp();
    state_.known.forgetSaved();
}

bool Life::leave()
{
    if (saving_.cndsavefunc())
        return false;
    clearUp();
    return true;
}

void Life::clearUp()
{
    for (const char *exchangeFile : {"\\tdyex\\d.txt", "\\tdyex\\o.txt", "\\tdyex\\i.txt", "\\tdyex\\f.txt"})
        files::deleteIfExists(files::joinPath(around_.exchangeFolder, QLatin1String(exchangeFile)));
    files_.kiltmpfyl();
}

void Life::openHelp(HelpPage page)
{
    static constexpr std::array pages{"\\Help\\Zelph\\Zelph.htm", "\\Help\\Zelph\\opens_index_first.htm",
                                      "\\Help\\Zelph\\opens_search_first.htm"};
    const QLatin1String suffix(pages.at(static_cast<std::size_t>(page)));
    around_.workspace.openPage(files::joinPath(files::programFolder(), suffix));
}

} // namespace document
