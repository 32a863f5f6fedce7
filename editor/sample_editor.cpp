#include "editor/sample_editor.h"

#include "editor/colour_classes.h"
#include "platform/control/editor_look.h"

#include <QMouseEvent>

namespace editor {

namespace {

constexpr int frameIndicator = 20; // apart from the editor's own
constexpr int frameOutline = 255; // fully opaque

} // namespace

SampleEditor::SampleEditor(QWidget *parent) : CodeEditor(parent)
{
    setObjectName(QStringLiteral("edSample"));
    setAccessibleName(tr("Sample"));
    setFocusPolicy(Qt::NoFocus);
    viewport()->setFocusPolicy(Qt::NoFocus);
    setFrameShape(QFrame::StyledPanel);
    setLanguage(control::Language::Html);
    loadText(sampleText);
    send(SCI_MARKERADD, sampleBookmarkLine, control::bookmarkMarker);
    setHighlightedLine(sampleHighlightLine);
    placeCaret(lineCount() - 1, 0);
    send(SCI_SETFIRSTVISIBLELINE, 0);
    send(SCI_SETREADONLY, 1);
    send(SCI_INDICSETSTYLE, frameIndicator, INDIC_FULLBOX);
    dressFrame();
}

QSize SampleEditor::sizeOf(int characters, int lines) const
{
    const QFont font = control::editorFont();
    const QFontMetrics metrics(font);
    return {metrics.averageCharWidth() * characters, (metrics.lineSpacing() + 2) * lines};
}

QSize SampleEditor::sizeHint() const { return sizeOf(54, 12); }

QSize SampleEditor::minimumSizeHint() const { return sizeOf(44, 6); }

void SampleEditor::dressFrame()
{
    const QColor colour = palette().color(QPalette::Highlight);
    send(SCI_INDICSETFORE, frameIndicator, colour.red() | (colour.green() << 8) | (colour.blue() << 16));
    send(SCI_INDICSETALPHA, frameIndicator, 0);
    send(SCI_INDICSETOUTLINEALPHA, frameIndicator, frameOutline);
}

control::ByteRange SampleEditor::pieceOf(const ColourClass &shown) const
{
    const long start = send(SCI_POSITIONFROMLINE, ulong(shown.line));
    const control::ByteRange line{start, send(SCI_GETLINEENDPOSITION, ulong(shown.line))};
    const QByteArray piece(shown.piece);
    const qsizetype at = piece.isEmpty() ? -1 : bytes(line).indexOf(piece);
    return at < 0 ? line : control::ByteRange{start + at, start + at + piece.size()};
}

void SampleEditor::pointAt(const ColourClass &shown)
{
    const control::ByteRange piece = pieceOf(shown);
    send(SCI_SETINDICATORCURRENT, frameIndicator);
    send(SCI_INDICATORCLEARRANGE, 0, send(SCI_GETLENGTH));
    send(SCI_INDICATORFILLRANGE, ulong(piece.start), piece.length());
    send(SCI_SCROLLRANGE, ulong(piece.end), piece.start);
}

void SampleEditor::changeEvent(QEvent *event)
{
    CodeEditor::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        dressFrame();
}

// Nothing is selected here, so that every colour stays to be seen.
void SampleEditor::mousePressEvent(QMouseEvent *event)
{
    const QPoint point = event->position().toPoint();
    const long at = send(SCI_POSITIONFROMPOINTCLOSE, ulong(point.x()), point.y());
    for (const ColourClass &shown : colourClasses()) {
        const control::ByteRange piece = pieceOf(shown);
        if (piece.start <= at && at < piece.end) {
            Q_EMIT classClicked(shown.label());
            return;
        }
    }
}

} // namespace editor
