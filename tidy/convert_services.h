// What the Convert and Tidy dialog needs of the window that owns it.
#pragma once

#include "tidy/convert_proposal.h"
#include "tidy/tidy_messages.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

namespace dialogs {
class Dialogs;
}

namespace tidy {

struct ConvertServices
{
    QString programFolder;
    dialogs::Dialogs &dialogs;
    std::function<QByteArray()> currentText; // the editor's whole text, UTF-8
    std::function<QString()> currentPath; // where that text stands; what it refers to is found beside it
    std::function<void(const QByteArray &)> runTidy; // starts a run and returns at once

    // The same on what a transformation made of the document at a path; the output is a document of its own.
    std::function<void(const QByteArray &, const QString &)> runTidyOnResult;

    // The files that the user lets transformations of the current document read though they lie elsewhere.
    std::function<QStringList()> allowedFiles;
    std::function<void(const QStringList &)> allowFiles; // these as well, while the program runs

    // What a transformation said. A place that is not in the current text is part of the message's text.
    std::function<void(const std::vector<Message> &)> showMessages;

    ConvertChoices *choices = nullptr; // kept from one opening to the next; outlives the dialog
};

} // namespace tidy
