#include "tree/opening_progress.h"

#include "platform/busy_pointer.h"

#include <QAbstractItemModel>
#include <QProgressDialog>
#include <optional>

namespace tree {

namespace {

constexpr int patience = 500; // ms until the window shows
constexpr int widthInCharacters = 50; // for the title to be read
constexpr int parts = 1000; // of the bar
constexpr qint64 mostOpened = 5'000'000; // rows; a million takes some 300 MB
constexpr qint64 step = 20'000; // rows, some ten milliseconds

} // namespace

Opened runWithProgress(Opening &opening, qint64 total, const QAbstractItemModel &model, QWidget *parent)
{
    std::optional<platform::BusyPointer> busy(std::in_place);
    QProgressDialog progress(QProgressDialog::tr("Expanding the tree..."), QProgressDialog::tr("Cancel"), 0,
                             parts, parent->window());
    progress.setObjectName(QStringLiteral("ExpandProgress"));
    progress.setAccessibleName(progress.labelText());
    progress.setWindowTitle(QStringLiteral("Zelph XML Editor"));
    progress.setMinimumWidth(progress.fontMetrics().averageCharWidth() * widthInCharacters);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.setMinimumDuration(patience);
    bool overtaken = false;
    const auto overtake = [&overtaken] { overtaken = true; };
    using Model = QAbstractItemModel;
    QObject::connect(&model, &Model::modelAboutToBeReset, &progress, overtake);
    QObject::connect(&model, &Model::rowsAboutToBeInserted, &progress, overtake);
    QObject::connect(&model, &Model::rowsAboutToBeRemoved, &progress, overtake);
    QObject::connect(&model, &Model::rowsAboutToBeMoved, &progress, overtake);
    while (opening.step(step)) {
        progress.setValue(int(qMin<qint64>(parts - 1, opening.passed() * parts / qMax<qint64>(total, 1))));
        if (progress.isVisible())
            busy.reset();
        if (overtaken)
            return Opened::Overtaken;
        const bool isCancelled = progress.wasCanceled() || (!busy && !parent->window()->isVisible());
        if (!isCancelled && opening.passed() < mostOpened)
            continue;
        opening.stop();
        return isCancelled ? Opened::Cancelled : Opened::AtBound;
    }
    return Opened::All;
}

} // namespace tree
