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
// Bytes of an edited tree that are written out to be compared; more could be felt.
constexpr qsizetype comparedAtOnce = 4'000'000;

constexpr long countedAtOnce = 1'000'000; // bytes

QString lineEndName(const control::TextHabits &habits)
{
    static constexpr const char *names[] = {"CR LF", "CR", "LF"};
    return habits.hasLineEnd ? QString::fromLatin1(names[int(habits.lineEnd)]) : QString();
}

// What a save would write; a declaration that cannot be followed is shown as such.
QString encodingName(const QByteArray &text, const files::TextEncoding &came)
{
    const auto outlook = files::outlookOf(text, came);
    if (!outlook) {
        const files::Declaration declaration = files::declarationIn(text);
        return DocumentMark::tr("%1 (unknown)").arg(QString::fromUtf8(declaration.name.left(20)));
    }
    const QString name = QString::fromLatin1(outlook->name);
    return outlook->byteOrderMark ? DocumentMark::tr("%1 with mark").arg(name) : name;
}

// In characters, which are counted one by one, and so not of a whole book.
QString selectionSize(const control::CodeEditor &editor)
{
    if (editor.selection().length() > countedAtOnce)
        return DocumentMark::tr("much selected");
    return DocumentMark::tr("%1 selected").arg(editor.selectedCharacters());
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
    const bool inEditor = session.saving().shownMode() == document::XmlMode;
    const bool cheap = inEditor || session.state().SavedXml.size() <= comparedAtOnce;
    if (inEditor)
        showForm(); // the declaration may have been edited
    if (cheap && session.saving().mayBeChanged())
        around_.window.setWindowModified(session.saving().isChanged());
}

void DocumentMark::showName()
{
    QString name = around_.session.saving().documentName();
    name.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]")); // which is the sign itself
    around_.window.setWindowTitle(QStringLiteral("%1[*] - Zelph XML Editor").arg(name));
}

void DocumentMark::showCaret()
{
    if (!around_.editor.isVisibleTo(&around_.window)) {
        around_.bar.setCaret({});
        return;
    }
    QString place
        = tr("Line %1, column %2").arg(around_.editor.caretLine() + 1).arg(around_.editor.caretColumn() + 1);
    if (around_.editor.canCopy())
        place += QStringLiteral(" (%1)").arg(selectionSize(around_.editor));
    around_.bar.setCaret(place);
}

void DocumentMark::showForm()
{
    document::Session &session = around_.session;
    const bool inEditor = session.saving().shownMode() == document::XmlMode;
    const bool cheap = session.state().SavedXml.size() <= comparedAtOnce;
    const QByteArray text = inEditor ? around_.editor.textInPlace()
        : cheap                      ? session.state().Document.xml()
                                     : session.state().SavedXml;
    around_.bar.setForm(encodingName(text, session.state().form.encoding),
                        lineEndName(control::habitsOf(text)));
}

} // namespace app
