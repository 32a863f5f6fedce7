#include "platform/system/settings_store.h"

#include <QStringList>
#include <QVariant>

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

QString numberIn(const QByteArray &blob)
{
    if (blob.isEmpty())
        return {};
    const auto byte = [&blob](qsizetype at) { return at < blob.size() ? quint8(blob[at]) : quint8(0); };
    return QString::number(qint16(byte(0) | byte(1) << 8));
}

QString textOf(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QString:
        return value.toString();
    case QMetaType::QStringList:
        // A text with commas that somebody wrote into the file by hand is read as a list.
        return value.toStringList().join(QLatin1String(", "));
    case QMetaType::QByteArray:
        return numberIn(value.toByteArray());
    default:
        return {};
    }
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
    QString text = textOf(settings_.value(cleanKey(key)));
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
    // A damaged file is told of as well, once and for all; it is written whole all the same.
    if (settings_.status() != QSettings::AccessError)
        return {};
    return platform::Failure{QStringLiteral("The settings cannot be kept in %1.").arg(settings_.fileName())};
}

} // namespace settings
