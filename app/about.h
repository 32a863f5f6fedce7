// The About box.
#pragma once

#include <QDialog>
#include <functional>

class QLabel;

namespace app {

class frmAbout : public QDialog
{
public:
    // openAddress hands the maker's web site to the shell.
    frmAbout(QWidget *parent, std::function<void(const QString &)> openAddress);
};

} // namespace app
