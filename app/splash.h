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
    frmSplash(dialogs::Dialogs &dialogs, const QString &programFolder, std::function<void()> handOver);

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
