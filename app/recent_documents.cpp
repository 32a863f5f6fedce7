#include "app/recent_documents.h"

#include "platform/files/file_helpers.h"
#include "platform/system/settings_store.h"

#include <QDir>
#include <QMenu>

namespace app {

namespace {

QString key(int place) { return QStringLiteral("recent/%1").arg(place); }

// Ampersands in a name are no mnemonics; a long folder gives way in its middle.
QString caption(int place, const QString &path)
{
    constexpr int mostLetters = 60;
    QString folder = QDir::toNativeSeparators(files::parentFolderOf(path));
    if (folder.size() > mostLetters)
        folder = folder.first(mostLetters / 2) + QChar(0x2026) + folder.last(mostLetters / 2);
    QString text = QStringLiteral("%1   %2").arg(files::fileNameOf(path), folder);
    text.replace(QLatin1Char('&'), QStringLiteral("&&"));
    return QStringLiteral("&%1  %2").arg(place % 10).arg(text);
}

} // namespace

RecentDocuments::RecentDocuments(settings::SettingsStore &store, QMenu &menu,
                                 std::function<void(const QString &)> open)
    : store_(store), menu_(menu), open_(std::move(open))
{
    connect(&menu_, &QMenu::aboutToShow, this, [this] {
        takeFromOthers();
        fill();
    });
    menu_.setToolTipsVisible(true);
    fill();
}

QStringList RecentDocuments::paths() const
{
    QStringList paths;
    for (int place = 1; place <= most; ++place)
        if (const QString path = store_.text(key(place)); !path.isEmpty())
            paths.append(path);
    return paths;
}

void RecentDocuments::add(const QString &path)
{
    takeFromOthers();
    QStringList all = paths();
    all.removeAll(path);
    all.prepend(path);
    keep(all);
    fill();
}

// Further windows keep theirs in the same place.
void RecentDocuments::takeFromOthers() { (void)store_.flush(); }

void RecentDocuments::keep(const QStringList &paths)
{
    for (int place = 1; place <= most; ++place)
        store_.setText(key(place), paths.value(place - 1));
}

void RecentDocuments::fill()
{
    menu_.clear();
    int place = 0;
    for (const QString &path : paths()) {
        QAction *item = menu_.addAction(caption(++place, path), this, [this, path] { open_(path); });
        item->setToolTip(QDir::toNativeSeparators(path));
    }
    if (place != 0)
        menu_.addSeparator();
    QAction *clear = menu_.addAction(tr("&Clear List"), this, [this] { keep({}); });
    clear->setEnabled(place != 0);
}

} // namespace app
