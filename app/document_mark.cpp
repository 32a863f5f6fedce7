#include "app/document_mark.h"

#include "app/status_bar.h"
#include "document/session.h"
#include "platform/control/code_editor.h"
#include "platform/control/text_habits.h"
#include "platform/files/file_helpers.h"

#include <QWidget>

namespace app {

namespace {

constexpr int restAfterTyping = 400; // milliseconds
constexpr qsizetype comparedAtOnce = 4'000'000; // bytes; comparing more could be felt

constexpr long countedAtOnce = 1'000'000; // bytes

QString lineEndName(const control::TextHabits &habits)
{
    static constexpr const char *names[] = {"CR LF", "CR", "LF"};
    return habits.hasLineEnd ? QString::fromLatin1(names[int(habits.lineEnd)]) : QString();
}

// In characters, which are counted one by one, and so not of a whole book.
QString selectionSize(const control::CodeEditor &editor, const control::ByteRange &selected)
{
    if (selected.length() > countedAtOnce)
        return DocumentMark::tr("much selected");
    const long characters
        = editor.send(QsciScintillaBase::SCI_COUNTCHARACTERS, ulong(selected.start), selected.end);
    return DocumentMark::tr("%1 selected").arg(characters);
}

} // namespace

DocumentMark::DocumentMark(const Around &around) : around_(around)
{
    later_.setSingleShot(true);
    later_.setInterval(restAfterTyping);
    connect(&later_, &QTimer::timeout, this, &DocumentMark::settle);
}

void DocumentMark::refresh()
{
    showName();
    showForm();
    showCaret();
    around_.window.setWindowModified(around_.session.saving().mayBeChanged());
    later_.start();
}

void DocumentMark::edited()
{
    around_.window.setWindowModified(around_.session.saving().mayBeChanged());
    later_.start();
}

void DocumentMark::caretMoved() { showCaret(); }

void DocumentMark::settle()
{
    document::Session &session = around_.session;
    if (session.saving().mayBeChanged() && session.state().SavedXml.size() <= comparedAtOnce)
        around_.window.setWindowModified(session.saving().isChanged());
}

void DocumentMark::showName()
{
    const QString name = around_.session.files().istmppath()
        ? tr("New Document")
        : files::fileNameOf(around_.session.state().CurrentFilePath);
    around_.window.setWindowTitle(QStringLiteral("%1[*] - Zelph XML Editor").arg(name));
}

void DocumentMark::showCaret()
{
    if (!around_.editor.isVisible()) {
        around_.bar.setCaret({});
        return;
    }
    QString place
        = tr("Line %1, column %2").arg(around_.editor.caretLine() + 1).arg(around_.editor.caretColumn() + 1);
    const control::ByteRange selected = around_.editor.selection();
    if (selected.length() > 0)
        place += QStringLiteral(" (%1)").arg(selectionSize(around_.editor, selected));
    around_.bar.setCaret(place);
}

void DocumentMark::showForm()
{
    const document::DocumentState &state = around_.session.state();
    const QByteArray declared
        = files::declaredEncoding(state.SavedXml.first(qMin(state.SavedXml.size(), qsizetype(4096))));
    const files::TextEncoding &came = state.form.encoding;
    QString encoding = QString::fromLatin1(declared.isEmpty() ? came.name : declared);
    if (came.byteOrderMark)
        encoding += tr(" with mark");
    around_.bar.setForm(encoding, lineEndName(control::habitsOf(state.SavedXml)));
}

} // namespace app
