#include "document/parsing.h"

#include "document/report.h"
#include "platform/files/file_helpers.h"

namespace document {

using dialogs::Buttons;
using dialogs::Icon;

std::optional<files::LoadedText> Parsing::readFile(const QString &path)
{
    auto file = [&] {
        const Busy busy(around_.workspace);
        return files::readTextFile(path);
    }();
    if (file)
        return std::move(*file);
    dom::ParseError unread;
    unread.reason = file.reason() + QStringLiteral("\r\n");
    xmleror(unread);
    return std::nullopt;
}

bool Parsing::Loadpathxml(const files::LoadedText &file)
{
    {
        const Busy busy(around_.workspace);
        around_.workspace.documentGoing();
        if (!state_.Document.load(file.utf8, baseFolder())) {
            showTree();
            return true;
        }
        around_.workspace.selectTab(XmlMode);
        around_.editor.loadText(file.utf8);
        state_.editorHasText = true;
    }
    xmlerr(true, false);
    return false;
}

bool Parsing::LoadXml(const QByteArray &text)
{
    dom::Entities entities;
    if (const auto error = dom::checkWellFormed(text, baseFolder(), &entities)) {
        xmleror(*error);
        return false;
    }
    loadAccepted(text, entities);
    return true;
}

bool Parsing::xmlerr(bool msgbolone, bool msgboltwo)
{
    return judge(around_.editor.textInPlace(), msgbolone, msgboltwo);
}

void Parsing::adoptEditorText()
{
    if (editorTextIsAccepted()) {
        around_.editor.setHighlightedLine(-1);
        if (state_.known.agreed(state_.domIdentity(), around_.editor.revision()))
            return;
    }
    if (!editorTextIsAccepted() && judge(around_.editor.textInPlace(), true, false))
        return;
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

bool Parsing::judge(const QByteArray &text, bool msgbolone, bool msgboltwo)
{
    dom::Entities entities;
    const auto error = [&] {
        const Busy busy(around_.workspace);
        return dom::checkWellFormed(text, baseFolder(), &entities);
    }();
    state_.HasParseErrors = error.has_value();
    if (error) {
        state_.accepted.reset();
        if (msgbolone)
            pointOut(*error);
        around_.editor.setHighlightedLine(static_cast<int>(error->line) - 1);
        return true;
    }
    state_.accepted = AcceptedText{around_.editor.revision(), std::move(entities)};
    if (msgboltwo)
        around_.dialogs.message(Icon::Exclamation, Buttons::Ok, QStringLiteral("No Errors found"));
    around_.editor.setHighlightedLine(-1);
    return false;
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
QString Parsing::baseFolder() const { return files::parentFolderOf(state_.CurrentFilePath); }

} // namespace document
