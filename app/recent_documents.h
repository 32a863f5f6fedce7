// The documents opened last, kept between runs and offered in the "File" menu.
#pragma once

#include <QObject>
#include <QStringList>
#include <functional>

class QMenu;

namespace settings {
class SettingsStore;
}

namespace app {

class RecentDocuments : public QObject
{
public:
    static constexpr int most = 10;

    // Fills the menu whenever it is about to be shown; open is called with the path that was chosen. Store
    // and menu outlive this.
    RecentDocuments(settings::SettingsStore &store, QMenu &menu, std::function<void(const QString &)> open);

    // The document was just opened, or saved under this name: it comes first from now on.
    void add(const QString &path);

    QStringList paths() const; // the latest first

private:
    void fill();
    void takeFromOthers();
    void keep(const QStringList &paths);

    settings::SettingsStore &store_;
    QMenu &menu_;
    std::function<void(const QString &)> open_;
};

} // namespace app
