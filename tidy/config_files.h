// The two configuration files that options reach Tidy by.
#pragma once

#include "platform/result.h"

#include <QString>
#include <QStringList>

namespace tidy {

// What the text to convert is. The order is that of the dialog's list.
enum class InputKind
{
    Xml,
    Html,
    Xhtml
};

// What it is to become. The order is that of the dialog's list.
enum class OutputKind
{
    Xml,
    Html,
    Xhtml
};

// The user's standing options and the options of one run.
QString standingOptionsFile(const QString &programFolder);
QString perRunOptionsFile(const QString &programFolder);

// Gives a run in another folder the user's standing options as they are now; nothing to do in the same
// folder.
platform::Result<void> lendStandingOptions(const QString &from, const QString &to);

// Write the per-run options: "input-xml: ..." and "output-...: yes", or for the result of a transformation
// "output-html: yes" alone. On failure the old file stands.
platform::Result<void> writeConversionOptions(const QString &programFolder, InputKind input,
                                              OutputKind output);
platform::Result<void> writeTransformationOptions(const QString &programFolder);

} // namespace tidy
