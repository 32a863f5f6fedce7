// The Tidy launcher: started without arguments in the program folder, does one run and ends.
#include "tidy/launcher/run_tidy.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace {

// A minute, and a second more for each megabyte: a Tidy that takes longer hangs.
int boundFor(qint64 inputSize)
{
    constexpr qint64 longest = 3'600'000;
    return int(std::min(60'000 + inputSize / 1000, longest));
}

// The working folder, where it is one; else the folder above the launcher's own.
QString programFolder()
{
    const QDir working = QDir::current();
    return working.exists(QStringLiteral("tdyex"))
        ? working.absolutePath()
        : QFileInfo(QCoreApplication::applicationDirPath()).absolutePath();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QString folder = programFolder();
    const QFileInfo input(folder + QStringLiteral("/tdyex/i.txt"));
    return launcher::runTidy(folder, boundFor(input.size())) ? 0 : 1;
}
