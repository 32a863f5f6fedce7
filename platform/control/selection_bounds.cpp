#include "platform/control/selection_bounds.h"

#include "platform/control/code_editor.h"
#include "platform/control/colour_reading.h"
#include "platform/control/editor_look.h"

#include <QImage>
#include <QPainter>

namespace control {

namespace {

using S = QsciScintillaBase;

// A corner, open towards the selected lines.
void drawCorner(CodeEditor &editor, int marker, const QColor &ink, bool first)
{
    constexpr int width = leftMarginWidth;
    constexpr int left = 3;
    constexpr int right = width - 4;
    const int height = int(editor.send(S::SCI_TEXTHEIGHT, 0));
    QImage image(width, height, QImage::Format_RGBA8888);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const int edge = first ? 2 : height - 4;
    painter.fillRect(left, edge, right - left, 2, ink);
    painter.fillRect(left, first ? edge : 0, 2, first ? height - edge : edge, ink);
    painter.end();
    editor.send(S::SCI_RGBAIMAGESETWIDTH, ulong(width));
    editor.send(S::SCI_RGBAIMAGESETHEIGHT, ulong(height));
    editor.SendScintilla(S::SCI_MARKERDEFINERGBAIMAGE, ulong(marker), image);
}

} // namespace

void SelectionBounds::draw(CodeEditor &editor)
{
    const Look look(editor.properties(), editor.palette());
    drawCorner(editor, selectionFirstMarker, look.marginInk, true);
    drawCorner(editor, selectionLastMarker, look.marginInk, false);
}

SelectionBounds::Lines SelectionBounds::selectedLines(const CodeEditor &editor)
{
    const EditorProperties &properties = editor.properties();
    // Without the margin the marks would have to colour the lines.
    if (!properties.selectionBounds || !properties.leftMargin)
        return {};
    const ByteRange selected = editor.selection();
    const Lines lines{editor.send(S::SCI_LINEFROMPOSITION, ulong(selected.start)),
                      editor.send(S::SCI_LINEFROMPOSITION, ulong(selected.end))};
    return lines.first == lines.last ? Lines{} : lines;
}

void SelectionBounds::update(CodeEditor &editor)
{
    const Lines lines = selectedLines(editor);
    const bool same = revision_ == editor.revision();
    if (lines == marked_ && (same || lines == Lines{}))
        return;
    if (marked_ != Lines{}) {
        // Lines of an edited text have moved, and their marks with them.
        for (const int marker : {selectionFirstMarker, selectionLastMarker})
            if (same)
                editor.send(S::SCI_MARKERDELETE,
                            ulong(marker == selectionFirstMarker ? marked_.first : marked_.last), marker);
            else
                editor.send(S::SCI_MARKERDELETEALL, ulong(marker));
    }
    marked_ = lines;
    revision_ = editor.revision();
    if (lines == Lines{})
        return;
    editor.send(S::SCI_MARKERADD, ulong(lines.first), selectionFirstMarker);
    editor.send(S::SCI_MARKERADD, ulong(lines.last), selectionLastMarker);
}

} // namespace control
