#include "document/saving.h"

#include "document/encodings.h"
#include "document/language.h"
#include "platform/files/file_helpers.h"

namespace document {

using dialogs::Answer;
using dialogs::Buttons;
using dialogs::Icon;

QString documentFilter()
{
    return QStringLiteral("XML Documents (*.xml)|*.xml|XML Schema Files (*.xsd)|*.xsd|"
                          "XSLT Stylesheets (*.xsl;*.xslt;*.fo)|*.xsl;*.xslt;*.fo|"
                          "HTML Files (*.htm;*.html)|*.htm;*.html|All files (*.*)|*.*|"
                          "SVG Images (*.svg)|*.svg|XHTML Files (*.xhtml;*.xht)|*.xhtml;*.xht|"
                          "DTDs and Entities (*.dtd;*.ent;*.mod)|*.dtd;*.ent;*.mod|"
                          "RELAX NG Schemas (*.rng)|*.rng|MathML (*.mml;*.mathml)|*.mml;*.mathml|"
                          "Feeds (*.rss;*.atom)|*.rss;*.atom|Style Sheets (*.css)|*.css");
}

bool Saving::domIsSource() const
{
    const int tab = around_.workspace.currentTab();
    return tab == NormalMode || (tab == Preview && state_.TabTag == NormalMode);
}

QByteArray Saving::currentText() const
{
    return domIsSource() ? state_.Document.xml() : around_.editor.text();
}

bool Saving::mayBeChanged() const
{
    return !(domIsSource() ? state_.known.isSaved(state_.domIdentity())
                           : state_.known.isSaved(around_.editor.revision()));
}

bool Saving::isChanged()
{
    if (!mayBeChanged())
        return false;
    const QByteArray text = domIsSource() ? state_.Document.xml() : around_.editor.textInPlace();
    if (text != state_.SavedXml)
        return true;
    knowSaved();
    return false;
}

void Saving::knowSaved()
{
    if (domIsSource())
        state_.known.savedFrom(state_.domIdentity());
    else
        state_.known.savedFrom(around_.editor.revision());
}

QString Saving::documentName() const
{
    const bool hasNone = files_.istmppath() && state_.proposedPath.isEmpty();
    return hasNone ? QStringLiteral("New Document") : files::fileNameOf(state_.likelyPath());
}

bool Saving::cndsavefunc()
{
    do {
        if (mustStay())
            return true;
    } while (showFormer_ && showFormer_());
    return false;
}

bool Saving::mustStay()
{
    if (!isChanged())
        return false;
    const Answer answer
        = around_.dialogs.message(Icon::Question, Buttons::YesNoCancel,
                                  QStringLiteral("Save changes to ") + documentName() + QStringLiteral("?"));
    if (answer == Answer::Cancel)
        return true;
    // A dismissed Save As dialog goes on without saving; a file that could not be written must not.
    const SaveResult result = answer == Answer::No ? SaveResult::Dismissed : save();
    if (result == SaveResult::Dismissed)
        giveUp();
    return result != SaveResult::Saved && result != SaveResult::Dismissed;
}

void Saving::keep(const QByteArray &text) const
{
    if (keep_)
        keep_(text);
}

void Saving::giveUp() { around_.workspace.textGivenUp(currentText()); }

platform::Result<void> Saving::write(const QString &path, const QByteArray &text)
{
    const Busy busy(around_.workspace);
    const auto written = files::writeDocumentFile(path, text, state_.form, [&] { keep(text); });
    if (!written) {
        keep(text);
        return platform::Failure{written.reason()};
    }
    state_.form = written->form;
    files_.spare(path);
    state_.stamp = files::stampOf(path).value_or(files::FileStamp());
    state_.SavedXml = text;
    knowSaved();
    around_.workspace.fileNote(written->note);
    around_.workspace.documentSaved();
    return {};
}

// The note stays when the box has gone.
bool Saving::offersSaveAs(const QString &reason)
{
    around_.workspace.fileNote(QStringLiteral("Not saved: %1").arg(reason));
    return around_.dialogs.message(
               Icon::Exclamation, Buttons::YesNo,
               QStringLiteral("The document is not saved.\n%1\n\n"
                              "Do you want to save it under another name or in another folder?")
                   .arg(reason))
        == Answer::Yes;
}

SaveResult Saving::save()
{
    if (files_.istmppath())
        return saveAs();
    if (mayWrite_ && !mayWrite_())
        return SaveResult::LoadedAgain;
    const QByteArray text = currentText();
    if (!settleEncoding(state_, around_, text))
        return SaveResult::Cancelled;
    const auto written = write(state_.CurrentFilePath, text);
    if (written)
        return SaveResult::Saved;
    const bool elsewhere = offersSaveAs(written.reason());
    return elsewhere && saveAs() == SaveResult::Saved ? SaveResult::Saved : SaveResult::Failed;
}

SaveResult Saving::saveAs()
{
    QString proposed = files_.istmppath() ? state_.proposedPath : state_.CurrentFilePath;
    SaveResult unsaved = SaveResult::Dismissed;
    for (;;) {
        const QString chosen
            = around_.dialogs.saveFile(QStringLiteral("Save as"), documentFilter(), proposed);
        if (chosen.isEmpty())
            return unsaved;
        proposed = files::fullPath(chosen);
        if (!mayWriteTo(proposed))
            continue;
        const QByteArray text = currentText();
        if (!settleEncoding(state_, around_, text))
            return SaveResult::Cancelled;
        const auto written = write(proposed, text);
        if (written) {
            moveTo(proposed);
            return SaveResult::Saved;
        }
        unsaved = SaveResult::Failed;
        if (!offersSaveAs(written.reason()))
            return unsaved;
    }
}

bool Saving::mayWriteTo(const QString &path)
{
    return !files::fileExists(path)
        || around_.dialogs.message(Icon::Question, Buttons::YesNo,
                                   files::fileNameOf(path)
                                       + QStringLiteral(" already exits, would you like to overwrite it?"))
        == Answer::Yes;
}

// The document is in that file now.
void Saving::moveTo(const QString &path)
{
    files_.kiltmpfyl();
    files_.setCurrentFile(path);
    if (around_.workspace.currentTab() == Preview) // of the copy that is gone
        files_.preview(currentText());
    around_.editor.setLanguage(languageOf(path, state_.SavedXml));
    showTitle();
}

void Saving::rememberDom()
{
    state_.SavedXml = state_.Document.xml();
    state_.known.savedFrom(state_.domIdentity());
}

void Saving::rememberLoaded()
{
    state_.SavedXml = currentText();
    knowSaved();
}

void Saving::showTitle()
{
    around_.workspace.setTitleLine(QStringLiteral("Zelph XML Editor - ") + state_.CurrentFilePath);
}

} // namespace document
