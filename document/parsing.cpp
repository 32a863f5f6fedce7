#include "document/parsing.h"

#include "document/encoding_report.h"
#include "document/report.h"
#include "platform/files/file_helpers.h"

#include <utility>

namespace document {

using dialogs::Buttons;
using dialogs::Icon;

std::optional<files::LoadedText> Parsing::readFile(const QString &path, const QByteArray &encoding)
{
    auto file = [&] {
        const Busy busy(around_.workspace);
        return files::readTextFile(path, encoding);
    }();
    if (!file) {
        dom::ParseError unread;
        unread.reason = file.reason() + QStringLiteral("\r\n");
        xmleror(unread);
        return std::nullopt;
    }
    read_ = judgedText(file->utf8, files::parentFolderOf(path), file->form.encoding);
    if (isStopped(*read_)) {
        read_.reset();
        return std::nullopt;
    }
    return std::move(*file);
}

bool Parsing::Loadpathxml(const files::LoadedText &file)
{
    // As it was judged when it was read.
    const bool isKnown = read_ && read_->text.isSharedWith(file.utf8) && read_->baseFolder == baseFolder();
    const Judged judged = isKnown ? *std::exchange(read_, std::nullopt)
                                  : judgedText(file.utf8, baseFolder(), file.form.encoding);
    if (!judged.fault) {
        loadAccepted(file.utf8, judged.entities);
        return true;
    }
    {
        const Busy busy(around_.workspace);
        around_.workspace.documentGoing();
        state_.Document.clear();
        around_.workspace.selectTab(XmlMode);
        around_.editor.loadText(file.utf8);
        state_.editorHasText = true;
    }
    conclude(judged, true, false);
    return false;
}

bool Parsing::LoadXml(const QByteArray &text)
{
    const Judged judged = judgedText(text, baseFolder(), std::nullopt);
    if (isStopped(judged))
        return false;
    if (judged.fault) {
        xmleror(*judged.fault);
        return false;
    }
    loadAccepted(text, judged.entities);
    return true;
}

bool Parsing::xmlerr(bool msgbolone, bool msgboltwo)
{
    return judge(msgbolone, msgboltwo) != Outcome::Accepted;
}

void Parsing::adoptEditorText()
{
    if (editorTextIsAccepted()) {
        around_.editor.setHighlightedLine(-1);
        if (state_.known.agreed(state_.domIdentity(), around_.editor.revision()))
            return;
    }
    if (!editorTextIsAccepted()) {
        const Outcome outcome = judge(true, false);
        if (outcome == Outcome::Stopped)
            state_.HasParseErrors = true; // as far as anybody knows: the text is not left
        if (outcome != Outcome::Accepted)
            return;
    }
    if (around_.editor.textInPlace() != state_.Document.xml())
        loadAccepted(around_.editor.text(), state_.accepted->entities);
    state_.known.agree(state_.domIdentity(), around_.editor.revision());
}

void Parsing::carryToEditor()
{
    // An empty Document is what a failed load leaves: there is no text to carry over then.
    if (state_.HasParseErrors || state_.Document.isEmpty())
        return;
    const DomIdentity dom = state_.domIdentity();
    if (!state_.known.agreed(dom, around_.editor.revision())) {
        const Busy busy(around_.workspace);
        const QByteArray xml = state_.Document.xml();
        putIntoEditor(xml);
        state_.known.agree(dom, around_.editor.revision());
    }
    // No edit of the tree leaves a document that would not parse, so this text needs no check when the editor
    // is left.
    state_.accepted = AcceptedText{around_.editor.revision(), state_.Document.entities()};
}

// Undo leads back to the document as it was read or saved, never to what the editor showed before it.
void Parsing::putIntoEditor(const QByteArray &xml)
{
    if (!state_.editorHasText)
        around_.editor.loadText(state_.SavedXml.isEmpty() ? xml : state_.SavedXml);
    state_.editorHasText = true;
    if (xml != around_.editor.textInPlace())
        around_.editor.replaceText(xml);
}

Parsing::Judged Parsing::judgedText(const QByteArray &text, const QString &baseFolder,
                                    const std::optional<files::TextEncoding> &encoding)
{
    Judged judged{text, baseFolder, {}, {}};
    const Busy busy(around_.workspace);
    judged.fault = dom::checkWellFormed(text, baseFolder, &judged.entities, around_.workspace.patience());
    if (encoding)
        judged.fault = firstFault(text, *encoding, std::move(judged.fault));
    return judged;
}

// Nobody waited for the verdict: everything stays as it was.
bool Parsing::isStopped(const Judged &judged)
{
    if (!judged.fault || !judged.fault->stopped)
        return false;
    around_.workspace.note(QStringLiteral("The check was stopped; everything stays as it was."));
    return true;
}

Parsing::Outcome Parsing::judge(bool msgbolone, bool msgboltwo)
{
    read_.reset(); // what was read is not going to be loaded
    const Judged judged = judgedText(around_.editor.textInPlace(), baseFolder(), state_.form.encoding);
    if (isStopped(judged))
        return Outcome::Stopped;
    conclude(judged, msgbolone, msgboltwo);
    return judged.fault ? Outcome::Refused : Outcome::Accepted;
}

// What a verdict on the editor's text leads to.
void Parsing::conclude(const Judged &judged, bool msgbolone, bool msgboltwo)
{
    state_.HasParseErrors = judged.fault.has_value();
    if (judged.fault) {
        state_.accepted.reset();
        if (msgbolone)
            pointOut(*judged.fault);
        around_.editor.setHighlightedLine(static_cast<int>(judged.fault->line) - 1);
        return;
    }
    state_.accepted = AcceptedText{around_.editor.revision(), judged.entities};
    if (msgboltwo)
        around_.dialogs.message(Icon::Exclamation, Buttons::Ok, QStringLiteral("No Errors found"));
    around_.editor.setHighlightedLine(-1);
}

void Parsing::pointOut(const dom::ParseError &error)
{
    xmleror(error);
    around_.editor.giveFocus();
    around_.editor.placeCaret(static_cast<int>(error.line) - 1, static_cast<int>(error.position) - 1);
}

void Parsing::xmleror(const dom::ParseError &error)
{
    around_.dialogs.message(Icon::Exclamation, Buttons::Ok, reportText(error));
}

void Parsing::loadAccepted(const QByteArray &text, const dom::Entities &entities)
{
    const Busy busy(around_.workspace);
    around_.workspace.documentGoing();
    state_.Document.loadAccepted(text, entities);
    showTree();
}

// The tree shows Document as it was just loaded, and nobody needs the nodes before any more.
void Parsing::showTree()
{
    around_.workspace.rebuildTree();
    state_.Document.releaseFormer();
}

bool Parsing::editorTextIsAccepted() const
{
    return state_.accepted && state_.accepted->editor == around_.editor.revision();
}

// Relative references to external entities are looked for beside the document.
QString Parsing::baseFolder() const { return files::parentFolderOf(state_.likelyPath()); }

} // namespace document
