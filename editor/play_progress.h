// Shows how far a long play has come, and lets the user stop it.
#pragma once

#include "platform/control/macro_player.h"

#include <QPointer>
#include <QProgressDialog>

namespace editor {

class PlayProgress
{
public:
    explicit PlayProgress(QWidget *parent) : parent_(parent) { }
    ~PlayProgress() { end(); }
    PlayProgress(const PlayProgress &) = delete;
    PlayProgress &operator=(const PlayProgress &) = delete;

    // To be asked about ten times a second while something named so is being played; false when the user
    // wants it stopped. Short plays show nothing.
    bool goOn(const QString &name, const control::PlayReport &report);

    void end();

private:
    void show();

    QPointer<QWidget> parent_;
    QPointer<QProgressDialog> dialog_;
    int asked_ = 0;
};

} // namespace editor
