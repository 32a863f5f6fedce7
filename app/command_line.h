// What the program was asked for when it was started.
#pragma once

#include <QString>
#include <QStringList>

namespace app {

struct CommandLine
{
    enum class Wish
    {
        Edit,
        Help,
        Version,
        Refused
    };

    Wish wish = Wish::Edit;
    QStringList documents; // paths; a window for each, a new document when there is none
    QString said; // for Help, Version and Refused: what is written before the program ends
};

// arguments: without the program's own name, and without those that the toolkit has taken for itself. A path
// that a shell split at blanks is one path again when there is such a file; double quotes only ever stood
// around it.
CommandLine readCommandLine(const QStringList &arguments);

} // namespace app
