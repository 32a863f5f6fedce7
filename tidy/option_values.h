// The values of all options as the options dialog shows them, and the list of those that the user changed,
// which is the content of default.tidy.
#pragma once

#include "platform/result.h"

#include <QString>
#include <QStringList>

namespace tidy {

class OptionValues
{
public:
    // Every option at its default.
    OptionValues();

    // Reads the standing options ("/tdyex/default.tidy"); a missing file leaves the defaults. Lines that name
    // no option on a tab are kept in the list and change no value.
    static OptionValues read(const QString &programFolder);

    // The value shown for an index that stands on a tab; empty for any other.
    QString value(int index) const;

    // Whether the value shown differs from the default.
    bool isChanged(int index) const;

    // Applies an edited value and keeps the changed-options list along.
    void apply(int index, const QString &value);

    // The changed-options list, "indent: auto" each; what save writes.
    const QStringList &changedOptions() const { return changed_; }

    // Writes the list to "/tdyex/default.tidy"; on failure the old file stands.
    platform::Result<void> save(const QString &programFolder) const;

    // Empties the list, shows the system's own defaults and writes these to "/tdyex/default.tidy". They are
    // not entered into the list. On failure the old file stands; the values are set all the same.
    platform::Result<void> loadDefault(const QString &programFolder);

private:
    void applyLine(const QString &line);
    void remove(const QString &line);

    QStringList values_;
    QStringList changed_;
};

} // namespace tidy
