// Shows that a text is still being judged, once that takes longer, and lets the user stop it.
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <QProgressDialog>

namespace app {

class CheckProgress
{
public:
    static constexpr int usualPatience = 1000; // ms until the window shows
    static constexpr int usualPause = 30; // ms between two looks at the user

    explicit CheckProgress(QWidget *parent, int patience = usualPatience, int pause = usualPause)
        : parent_(parent), patience_(patience), pause_(pause)
    {
        clock_.start();
    }
    ~CheckProgress();
    CheckProgress(const CheckProgress &) = delete;
    CheckProgress &operator=(const CheckProgress &) = delete;

    // To be asked every few milliseconds; false when the user wants no more of it. Until the window shows no
    // event is handled; after that only what is meant for it: the text that is judged may not change, whoever
    // would have it otherwise.
    bool goOn();

private:
    void show();

    QPointer<QWidget> parent_;
    int patience_;
    int pause_;
    QPointer<QProgressDialog> dialog_;
    QElapsedTimer clock_;
    bool isShown_ = false;
};

} // namespace app
