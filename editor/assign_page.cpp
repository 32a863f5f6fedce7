#include "editor/assign_page.h"

#include "editor/header_lines.h"
#include "platform/dialogs/fixed_font.h"
#include "platform/dialogs/theme_icon.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace editor {

namespace {

constexpr int fewestColumns = 72; // characters side by side

QLabel *label(const QString &name, const QString &text, QWidget *parent)
{
    auto *made = new QLabel(text, parent);
    made->setObjectName(name);
    made->setTextFormat(Qt::PlainText);
    made->setWordWrap(true);
    return made;
}

QPushButton *button(const QString &name, const QString &caption, const char *icon, QWidget *parent)
{
    auto *made = new QPushButton(dialogs::themeIcon(QLatin1String(icon)), caption, parent);
    made->setObjectName(name);
    return made;
}

// A path is told by its end, but read from its beginning.
void fill(QLineEdit &field, const QString &text)
{
    field.setText(text);
    field.setCursorPosition(0);
    field.setToolTip(text.toHtmlEscaped());
}

} // namespace

AssignPage::AssignPage(const QString &location, QWidget *parent) : QWidget(parent), Text2(nullptr)
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(
        label(QStringLiteral("lblintro"),
              QStringLiteral("You can assign your Document to another file, and see the changes."), this));
    layout->addSpacing(layout->spacing());
    layout->addWidget(label(QStringLiteral("lbllocation"),
                            QStringLiteral("Your Document location is (this is the temporary location of the "
                                           "Document you are working on):"),
                            this));
    QLineEdit *Text1 = field(QStringLiteral("Text1"), QStringLiteral("Document location"));
    fill(*Text1, location);
    layout->addWidget(Text1);
    layout->addSpacing(layout->spacing());
    layout->addWidget(label(QStringLiteral("lblfile"),
                            QStringLiteral("You can select the file you would like to assign your Document "
                                           "to, (no changes will be made to this file):"),
                            this));
    Text2 = field(QStringLiteral("Text2"), QStringLiteral("Assigned file"));
    auto *Command1 = button(QStringLiteral("Command1"), QStringLiteral("&Browse..."), "document-open", this);
    connect(Command1, &QPushButton::clicked, this, &AssignPage::browseClicked);
    auto *file = new QHBoxLayout;
    file->addWidget(Text2, 1);
    file->addWidget(Command1);
    layout->addLayout(file);
    layout->addSpacing(layout->spacing());
    layout->addWidget(headerLines(location));
    layout->addStretch(1);
    const int narrowest = fontMetrics().averageCharWidth() * fewestColumns;
    setMinimumSize(narrowest, layout->totalHeightForWidth(narrowest)); // wrapped texts would shrink the rest
    setFocusProxy(Command1);
}

void AssignPage::showAssignedFile(const QString &path) { fill(*Text2, path); }

QLineEdit *AssignPage::field(const QString &name, const QString &accessibleName)
{
    auto *made = new QLineEdit(this);
    made->setObjectName(name);
    made->setAccessibleName(accessibleName);
    made->setReadOnly(true);
    return made;
}

QGroupBox *AssignPage::headerLines(const QString &location)
{
    auto *frame = new QGroupBox(QStringLiteral("Here are some Tags you can use in your code:"), this);
    frame->setObjectName(QStringLiteral("Frame1"));
    auto *grid = new QGridLayout(frame);
    grid->setColumnStretch(1, 1);
    int index = 0;
    for (const HeaderLineRow &row : headerLineTable)
        addHeaderLine(*frame, index++, row, location);
    return frame;
}

void AssignPage::addHeaderLine(QGroupBox &frame, int index, const HeaderLineRow &row, const QString &location)
{
    const QString line = headerLine(row, location);
    const QString kind = QLatin1String(row.kind);
    QLineEdit *text = field(QStringLiteral("Text3_%1").arg(index), kind + QStringLiteral(" line"));
    text->setFont(dialogs::fixedFont(*this));
    text->setLayoutDirection(Qt::LeftToRight); // as all code
    fill(*text, line);
    auto *caption = new QLabel(QLatin1String(row.caption), &frame);
    caption->setBuddy(text);
    auto *copy = button(QStringLiteral("cmdcopy_%1").arg(index), QStringLiteral("Copy"), "edit-copy", &frame);
    copy->setAccessibleName(QStringLiteral("Copy the %1 line").arg(kind));
    copy->setToolTip(copy->accessibleName());
    connect(copy, &QPushButton::clicked, this, [line] { QGuiApplication::clipboard()->setText(line); });
    auto *grid = static_cast<QGridLayout *>(frame.layout());
    grid->addWidget(caption, index, 0);
    grid->addWidget(text, index, 1);
    grid->addWidget(copy, index, 2);
}

} // namespace editor
