// What the user chose about a code editor, put into effect.
#include "platform/control/code_editor.h"

#include "platform/control/editor_look.h"

#include <QScrollBar>
#include <QToolTip>

namespace control {

namespace {

// What only an anew dressed text shows.
bool sameDress(const EditorProperties &one, const EditorProperties &other)
{
    return one.colours == other.colours && one.styles == other.styles && one.font == other.font;
}

} // namespace

void CodeEditor::setUpLook()
{
    properties_.font.name = fixedPitchFace(properties_.font.name);
    setUpEditor(*this);
    setEditorLexer(*this, language_);
    dress();
    applyOptions();
    connect(this, &QsciScintillaBase::SCN_UPDATEUI, this, [this] { lineNumbers_.update(*this); });
    connect(this, &QsciScintillaBase::SCN_PAINTED, this, [this] { lineNumbers_.update(*this); });
    connect(this, &QsciScintillaBase::SCN_ZOOM, this, [this] {
        lineNumbers_.fit(*this);
        SelectionBounds::draw(*this);
    });
    connect(verticalScrollBar(), &QScrollBar::sliderMoved, this, &CodeEditor::tellLine);
    connect(verticalScrollBar(), &QScrollBar::sliderReleased, this, [] { QToolTip::hideText(); });
}

void CodeEditor::dress()
{
    dressEditor(*this);
    SelectionBounds::draw(*this);
    lineNumbers_.fit(*this);
    Q_EMIT dressed();
}

void CodeEditor::applyOptions()
{
    send(SCI_SETVIEWWS, ulong(properties_.whiteSpace ? SCWS_VISIBLEALWAYS : SCWS_INVISIBLE));
    lineNumbers_.fit(*this);
    fitMargins(*this);
    selectionBounds_.update(*this);
}

void CodeEditor::setProperties(const EditorProperties &properties)
{
    EditorProperties wanted = properties;
    if (wanted.font.name != properties_.font.name)
        wanted.font.name = fixedPitchFace(wanted.font.name);
    const EditorProperties before = std::exchange(properties_, wanted);
    if (before == wanted)
        return;
    if (!sameDress(before, wanted))
        dress();
    applyOptions();
}

void CodeEditor::changeProperties(const EditorProperties &properties)
{
    setProperties(properties);
    Q_EMIT propertiesChanged();
}

void CodeEditor::noticeShortcutChange() { Q_EMIT propertiesChanged(); }

bool CodeEditor::whiteSpaceShown() const { return properties_.whiteSpace; }

// No choice of the user's own dialog, so nobody is told.
void CodeEditor::setWhiteSpaceShown(bool shown)
{
    properties_.whiteSpace = shown;
    applyOptions();
}

void CodeEditor::setLineNumbersShown(bool shown)
{
    properties_.lineNumbering = shown;
    applyOptions();
}

// The line that the scroll bar has been dragged to, beside the hand.
void CodeEditor::tellLine(int position)
{
    if (!properties_.lineToolTips)
        return;
    const long line = send(SCI_DOCLINEFROMVISIBLE, ulong(position));
    const QString text = tr("Line %1").arg(lineNumber(properties_, int(line)));
    const QFontMetrics metrics(QToolTip::font());
    const int beside = metrics.horizontalAdvance(text) + 2 * metrics.height();
    const QScrollBar &bar = *verticalScrollBar();
    QToolTip::showText(QPoint(bar.mapToGlobal(QPoint()).x() - beside, QCursor::pos().y() - metrics.height()),
                       text, this);
}

void CodeEditor::showBytes(char32_t first)
{
    constexpr char32_t count = 256;
    const char32_t former = std::exchange(firstByteShown_, first);
    if (former == first)
        return;
    for (char32_t byte = 0; byte < count; ++byte) {
        const QByteArray number = 'x' + QByteArray::number(uint(byte), 16).toUpper().rightJustified(2, '0');
        const auto encoded = [byte](char32_t from) {
            const char32_t c = from + byte;
            return QString::fromUcs4(&c, 1).toUtf8();
        };
        if (former != 0)
            SendScintilla(SCI_CLEARREPRESENTATION, encoded(former).constData());
        if (first != 0)
            SendScintilla(SCI_SETREPRESENTATION, encoded(first).constData(), number.constData());
    }
}

} // namespace control
