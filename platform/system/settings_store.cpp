#include "platform/system/settings_store.h"

#include <QStringList>

namespace settings {

namespace {

#if defined(Q_OS_WIN) || defined(Q_OS_MACOS)
constexpr QSettings::Format format = QSettings::NativeFormat;
#else
constexpr QSettings::Format format = QSettings::IniFormat;
#endif

QString cleanKey(QString key)
{
    const QStringList parts
        = key.replace(QLatin1Char('\\'), QLatin1Char('/')).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    return parts.join(QLatin1Char('/'));
}

} // namespace

SettingsStore::SettingsStore()
    : settings_(format, QSettings::UserScope, QStringLiteral("Zelph"), QStringLiteral("Zelph XML Editor"))
{
    settings_.setFallbacksEnabled(false);
}

SettingsStore::SettingsStore(const QString &file) : settings_(file, QSettings::IniFormat) { }

QString SettingsStore::text(const QString &key, const QString &defaultText) const
{
    const QVariant value = settings_.value(cleanKey(key));
    // A text with commas that somebody wrote into the file by hand is read as a list.
    QString text = value.toStringList().join(QLatin1String(", "));
    const qsizetype end = text.indexOf(QChar());
    if (end >= 0)
        text.truncate(end);
    return text.isEmpty() ? defaultText : text;
}

void SettingsStore::setText(const QString &key, const QString &text)
{
    settings_.setValue(cleanKey(key), text);
}

QByteArray SettingsStore::blob(const QString &key) const
{
    return settings_.value(cleanKey(key)).toByteArray();
}

void SettingsStore::setBlob(const QString &key, const QByteArray &blob)
{
    settings_.setValue(cleanKey(key), blob);
}

platform::Result<void> SettingsStore::flush()
{
    settings_.sync();
    if (settings_.status() == QSettings::NoError)
        return {};
    return platform::Failure{QStringLiteral("The settings cannot be kept in %1.").arg(settings_.fileName())};
}

} // namespace settings
