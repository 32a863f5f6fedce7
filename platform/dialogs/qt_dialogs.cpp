#include "platform/dialogs/qt_dialogs.h"

#include "platform/dialogs/file_filter.h"
#include "platform/dialogs/message_text.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

namespace dialogs {
namespace {

QMessageBox::Icon boxIcon(Icon icon)
{
    switch (icon) {
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Critical:
        return QMessageBox::Critical;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButton boxButton(Answer answer)
{
    switch (answer) {
    case Answer::Ok:
        return QMessageBox::Ok;
    case Answer::Yes:
        return QMessageBox::Yes;
    case Answer::No:
        return QMessageBox::No;
    case Answer::Cancel:
        return QMessageBox::Cancel;
    }
    return QMessageBox::NoButton;
}

QMessageBox::StandardButtons boxButtons(Buttons buttons)
{
    switch (buttons) {
    case Buttons::Ok:
        return QMessageBox::Ok;
    case Buttons::YesNo:
    case Buttons::NoYes:
        return QMessageBox::Yes | QMessageBox::No;
    case Buttons::YesNoCancel:
        return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::NoButton;
}

Answer answerOf(int button, Answer least)
{
    for (const Answer answer : {Answer::Ok, Answer::Yes, Answer::No, Answer::Cancel}) {
        if (button == boxButton(answer))
            return answer;
    }
    return least;
}

// Names and addresses are to be found again by what was copied.
void copyPlainly(QClipboard::Mode mode)
{
    QClipboard *clipboard = QApplication::clipboard();
    const bool own = mode == QClipboard::Clipboard ? clipboard->ownsClipboard() : clipboard->ownsSelection();
    const QString text = own ? clipboard->text(mode) : QString();
    if (const QString plain = copiedText(text); plain != text)
        clipboard->setText(plain, mode);
}

// In a folder that is there: where the file's own has gone, in the next one above it.
void propose(QFileDialog &dialog, const QFileInfo &file)
{
    QString folder = file.absolutePath();
    while (!QFileInfo(folder).isDir() && !QFileInfo(folder).isRoot())
        folder = QFileInfo(folder).absolutePath();
    dialog.setDirectory(folder);
    dialog.selectFile(file.fileName());
}

} // namespace

// Whoever asks gets the focus back.
QWidget *QtDialogs::parent() const
{
    for (QWidget *asking : {QApplication::activeModalWidget(), QApplication::activeWindow()})
        if (asking != nullptr)
            return asking;
    return window_.data();
}

Answer QtDialogs::message(Icon icon, Buttons buttons, const QString &text, const QString &title)
{
    const Answer least = leastAnswer(buttons);
    QMessageBox box(boxIcon(icon), title.isEmpty() ? QStringLiteral("Zelph XML Editor") : title, QString(),
                    boxButtons(buttons), parent());
    box.setTextFormat(Qt::PlainText);
    box.setText(fittedText(text));
    QObject::connect(QApplication::clipboard(), &QClipboard::changed, &box, copyPlainly);
    for (QAbstractButton *button :
         box.buttons()) // whose pictures differ from desktop to desktop, where all have some
        button->setIcon({});
    box.setDefaultButton(buttons == Buttons::Ok          ? QMessageBox::Ok
                             : buttons == Buttons::NoYes ? QMessageBox::No
                                                         : QMessageBox::Yes);
    box.setEscapeButton(boxButton(least));
    return answerOf(box.exec(), least);
}

QString QtDialogs::openFile(const QString &title, const QString &filter)
{
    QFileDialog dialog(parent(), title, folder_);
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(nameFilters(filter));
    return run(dialog);
}

QString QtDialogs::saveFile(const QString &title, const QString &filter, const QString &proposed)
{
    QFileDialog dialog(parent(), title, folder_);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(nameFilters(filter));
    if (!proposed.isEmpty())
        dialog.selectNameFilter(filterFor(QFileInfo(proposed).fileName(), dialog.nameFilters()));
    dialog.setDefaultSuffix(defaultEnding(dialog.selectedNameFilter()));
    QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                     [&](const QString &chosen) { dialog.setDefaultSuffix(defaultEnding(chosen)); });
    if (!proposed.isEmpty())
        propose(dialog, QFileInfo(proposed));
    return run(dialog);
}

QString QtDialogs::run(QFileDialog &dialog)
{
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    const QFileInfo chosen(dialog.selectedFiles().constFirst());
    folder_ = chosen.absolutePath();
    return QDir::toNativeSeparators(chosen.absoluteFilePath());
}

} // namespace dialogs
