// Help: the program's own pages in a window of their own, so that F1 never leads to whatever program a
// desktop has for pages, this editor among them.
#pragma once

#include <QMainWindow>

class QAction;
class QLineEdit;
class QToolBar;

namespace browser {
class HelpView;
}

namespace app {

class frmHelp : public QMainWindow
{
    Q_OBJECT

public:
    // folder: where the pages stand, and must be there already. parent: above which the window opens; it goes
    // with it.
    frmHelp(const QString &folder, QWidget *parent);

    // Brings the window to the front with a page of the folder; false when the page is not there.
    bool open(const QString &path);

    QString shownPage() const; // the path of the file

Q_SIGNALS:
    // A link led out of the help.
    void leftBy(const QString &address);

private:
    void addActions();
    void showPage(const QString &title);
    QAction *add(const QString &caption, const char *name, const char *icon, const QKeySequence &keys,
                 const std::function<void()> &run);

    QToolBar *bar_;
    browser::HelpView *pages_;
    QLineEdit *find_;
    QAction *back_ = nullptr;
    QAction *forward_ = nullptr;
};

} // namespace app
