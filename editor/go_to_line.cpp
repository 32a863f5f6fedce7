#include "editor/go_to_line.h"

#include "platform/control/code_editor.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>
#include <algorithm>

namespace editor {

namespace {

const QString hint = QStringLiteral("Also 12:5 for a column, +5 or -5 for lines from here.");

} // namespace

std::optional<LinePlace> placeAskedFor(const QString &text, int currentLine, int lineCount)
{
    static const QRegularExpression form(
        QStringLiteral("^\\s*([+-]?)([0-9]+)\\s*(?:[:,]\\s*([0-9]+)\\s*)?$"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    // Numbers too long to be read are larger than any line.
    const auto number = [](const QString &digits) {
        bool read = false;
        const int value = digits.toInt(&read);
        return qint64(read ? value : std::numeric_limits<int>::max());
    };
    const QString sign = match.captured(1);
    const qint64 lines = number(match.captured(2));
    qint64 line = lines - 1;
    if (!sign.isEmpty())
        line = std::clamp<qint64>(currentLine + (sign == u"-" ? -lines : lines), 0, lineCount - 1);
    if (line < 0 || line >= lineCount)
        return std::nullopt;
    const qint64 column = match.captured(3).isEmpty() ? 1 : number(match.captured(3));
    return LinePlace{int(line), int(std::max<qint64>(column, 1) - 1)};
}

frmGotoLine::frmGotoLine(int currentLine, int lineCount, QWidget *parent)
    : QDialog(parent), currentLine_(currentLine), lineCount_(lineCount), txtLine(new QLineEdit(this)),
      lblRange(new QLabel(this))
{
    setObjectName(QStringLiteral("frmGotoLine"));
    setWindowTitle(QStringLiteral("Go to Line"));
    txtLine->setObjectName(QStringLiteral("txtLine"));
    lblRange->setObjectName(QStringLiteral("lblRange"));
    lblRange->setMinimumWidth(fontMetrics().horizontalAdvance(hint));
    auto *label = new QLabel(QStringLiteral("&Line (1 to %L1):").arg(lineCount), this);
    label->setBuddy(txtLine);
    txtLine->setText(QString::number(currentLine + 1));
    txtLine->selectAll();
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->setObjectName(QStringLiteral("buttons"));
    OKButton = buttons->button(QDialogButtonBox::Ok);
    OKButton->setText(QStringLiteral("&Go"));
    OKButton->setObjectName(QStringLiteral("OKButton"));
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("CancelButton"));

    auto *whole = new QVBoxLayout(this);
    whole->addWidget(label);
    whole->addWidget(txtLine);
    whole->addWidget(lblRange);
    whole->addWidget(buttons);
    whole->setSizeConstraint(QLayout::SetFixedSize);
    connect(txtLine, &QLineEdit::textChanged, this, &frmGotoLine::judge);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    judge();
}

void frmGotoLine::judge()
{
    const std::optional<LinePlace> place = placeAskedFor(txtLine->text(), currentLine_, lineCount_);
    const bool asked = !txtLine->text().trimmed().isEmpty();
    place_ = place.value_or(LinePlace{});
    OKButton->setEnabled(place.has_value());
    lblRange->setText(place || !asked ? hint : QStringLiteral("There is no such line."));
}

bool goToLine(control::CodeEditor &editor, QWidget *parent)
{
    frmGotoLine dialog(editor.caretLine(), editor.lineCount(), parent);
    if (dialog.exec() != QDialog::Accepted)
        return false;
    editor.placeCaret(dialog.place().line, dialog.place().column);
    editor.giveFocus();
    return true;
}

} // namespace editor
