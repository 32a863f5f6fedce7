// The user's settings between runs: texts and blobs under keys.
#pragma once

#include "platform/result.h"

#include <QByteArray>
#include <QSettings>
#include <QString>

namespace settings {

// Keys may be written with either separator, with empty parts ("\cEdit\colors\window").
class SettingsStore
{
public:
    // The user's own settings, where this desktop keeps such things.
    SettingsStore();

    // The settings in a named file.
    explicit SettingsStore(const QString &file);

    // A missing or empty value reads as the default. A blob reads as the number that its first two bytes are,
    // with sign and the lower byte first; any other kind of value as the default.
    QString text(const QString &key, const QString &defaultText = {}) const;
    void setText(const QString &key, const QString &text);

    // Empty when missing.
    QByteArray blob(const QString &key) const;
    void setBlob(const QString &key, const QByteArray &blob);

    // Writes what has been set; otherwise that happens soon, and when the store goes away.
    platform::Result<void> flush();

private:
    QSettings settings_;
};

} // namespace settings
