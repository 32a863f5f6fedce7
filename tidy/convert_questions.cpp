#include "tidy/convert_questions.h"

#include "platform/dialogs/dialogs.h"

namespace tidy {

namespace {

QString listed(const QStringList &names)
{
    constexpr qsizetype most = 10;
    QString lines = names.first(qMin(names.size(), most)).join(QLatin1Char('\n'));
    if (names.size() > most)
        lines += QStringLiteral("\nand %1 more").arg(names.size() - most);
    return lines;
}

QString aboutFiles(const QStringList &refused)
{
    return QStringLiteral("The transformation is to read what lies neither in the folder of the document nor "
                          "in that of the style sheet:\n%1\nDo you want to allow that for this document?")
        .arg(listed(refused));
}

QString aboutVersions(const QStringList &newerSheets)
{
    return QStringLiteral("Only version 1.0 of XSLT can be carried out here; what is newer is left out or "
                          "gives errors:\n%1\nDo you want to transform all the same?")
        .arg(listed(newerSheets));
}

bool isConfirmed(dialogs::Dialogs &dialogs, const QString &question)
{
    return dialogs.message(dialogs::Icon::Exclamation, dialogs::Buttons::NoYes, question)
        == dialogs::Answer::Yes;
}

} // namespace

bool grantsWhatLacked(dialogs::Dialogs &dialogs, const Transformation &done, TransformLicence &licence)
{
    if (!done.refused.isEmpty()) {
        if (!isConfirmed(dialogs, aboutFiles(done.refused)))
            return false;
        licence.files += done.refused;
        return true;
    }
    if (done.newerSheets.isEmpty() || licence.newerSheets)
        return false;
    licence.newerSheets = isConfirmed(dialogs, aboutVersions(done.newerSheets));
    return licence.newerSheets;
}

} // namespace tidy
