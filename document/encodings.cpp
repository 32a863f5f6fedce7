#include "document/encodings.h"

#include "platform/files/encoding_fault.h"
#include "platform/files/file_helpers.h"

namespace document {

using dialogs::Answer;
using dialogs::Buttons;
using dialogs::Icon;

namespace {

QString latin1(const QByteArray &name) { return QString::fromLatin1(name); }

// The encoding that others will take the text for.
files::TextEncoding expectedOf(const QByteArray &text, const files::Declaration &declaration,
                               const files::Outlook &outlook)
{
    files::TextEncoding encoding;
    encoding.name = outlook.name;
    encoding.byteOrderMark
        = outlook.byteOrderMark || (!declaration.names() && files::looksLikeHtml(text)); // which says it then
    encoding.declared = declaration;
    return encoding;
}

QString question(const DocumentState &state, const files::Declaration &declaration,
                 const files::TextEncoding &expected)
{
    const QString name = files::fileNameOf(state.CurrentFilePath);
    const QString is = latin1(state.form.encoding.name);
    const QString what = declaration.names()
        ? QStringLiteral("%1 declares %2 but is in %3.").arg(name, latin1(expected.name), is)
        : QStringLiteral("%1 is in %2 but does not say so.").arg(name, is);
    return what
        + QStringLiteral("\nDo you want to save it in %1, so that other programs can read it?\n"
                         "If not, it stays in %2.")
              .arg(latin1(expected.name), is);
}

} // namespace

bool settleEncoding(DocumentState &state, const Surroundings &around, const QByteArray &text)
{
    if (state.encodingKept || text == state.SavedXml || !files::looksLikeMarkup(text))
        return true;
    const auto fault = files::encodingFault(text, state.form.encoding);
    if (!fault || !fault->readable)
        return true;
    const files::Declaration declaration = files::declarationIn(text);
    const auto outlook = files::outlookOf(text, {}); // of a text that comes from nowhere
    if (!outlook)
        return true;
    const files::TextEncoding expected = expectedOf(text, declaration, *outlook);
    const Answer answer = around.dialogs.message(Icon::Question, Buttons::YesNoCancel,
                                                 question(state, declaration, expected));
    if (answer == Answer::Yes) {
        state.form.encoding = expected;
        state.accepted.reset();
    }
    state.encodingKept = answer == Answer::No;
    return answer != Answer::Cancel;
}

bool Encodings::canReopen() const { return files::fileExists(state_.CurrentFilePath) && !life_.isNew(); }

bool Encodings::reopen(const QByteArray &encoding)
{
    if (saving_.isChanged()) {
        const QString text
            = QStringLiteral("Do you want to read %1 again, in %2?\nWhat you changed here would be lost.")
                  .arg(files::fileNameOf(state_.CurrentFilePath), latin1(encoding));
        if (around_.dialogs.message(Icon::Question, Buttons::YesNo, text) != Answer::Yes)
            return false;
    }
    return life_.reopen(encoding);
}

platform::Result<files::Redeclared> Encodings::prepared(const QByteArray &text,
                                                        const files::EncodingWish &wish) const
{
    const auto fault = files::encodingFault(text, state_.form.encoding);
    if (fault && !fault->readable) {
        return platform::Failure{
            fault->reason + QStringLiteral(" Replace it first, or open the file in another encoding.")};
    }
    auto changed = files::redeclare(text, wish);
    if (!changed)
        return changed;
    if (const auto bytes = files::encodeText(changed->utf8, changed->encoding); !bytes)
        return platform::Failure{bytes.reason()};
    return changed;
}

SaveResult Encodings::saveWith(const files::EncodingWish &wish)
{
    const QByteArray text = saving_.currentText();
    const auto changed = prepared(text, wish);
    if (!changed) {
        around_.dialogs.message(Icon::Exclamation, Buttons::Ok,
                                QStringLiteral("The document is not saved.\n%1").arg(changed.reason()));
        return SaveResult::Failed;
    }
    if (changed->utf8 != text)
        putIn(changed->utf8);
    const files::TextEncoding former = std::exchange(state_.form.encoding, changed->encoding);
    state_.accepted.reset();
    const SaveResult result = saving_.save();
    if (result != SaveResult::Saved)
        state_.form.encoding = former;
    if (around_.workspace.currentTab() == XmlMode)
        parsing_.xmlerr(false, false);
    return result;
}

// As the user would: the declaration is changed in the text, and that can be undone there.
void Encodings::putIn(const QByteArray &text)
{
    const int tab = around_.workspace.currentTab();
    const Tab enteredFrom = state_.TabTag;
    around_.workspace.selectTab(XmlMode);
    around_.editor.replaceText(text);
    if (tab == Preview)
        around_.workspace.selectTab(enteredFrom);
    around_.workspace.selectTab(tab);
}

} // namespace document
