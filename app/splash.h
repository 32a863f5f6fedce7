// The start-up window: shows itself while the program gets ready, and checks that its files are there.
#pragma once

#include <QTimer>
#include <QWidget>
#include <functional>

class QLabel;

namespace dialogs {
class Dialogs;
}

namespace app {

class frmSplash : public QWidget
{
public:
    // handOver prepares and shows the main window; it is called once, unless a file of the program folder
    // is missing: that is reported, and the application ends with exit code 1.
    // A click or a key goes on at once.
    frmSplash(dialogs::Dialogs &dialogs, const QString &programFolder, std::function<void()> handOver);

    // Checks and hands over as soon as events are handled, whether or not the window was ever shown.
    void goOn();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;

private:
    void stepWord();
    void check();

    dialogs::Dialogs &dialogs_;
    QString programFolder_;
    std::function<void()> handOver_;
    QLabel *Picture1;
    QLabel *Label3;
    QTimer Timer1;
    QTimer Timer2;
};

} // namespace app
