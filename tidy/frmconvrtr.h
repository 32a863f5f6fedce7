// The Convert and Tidy dialog: the current text through Tidy, or a document and a style sheet through a
// transformation and then through Tidy.
#pragma once

#include "tidy/convert_services.h"
#include "tidy/convert_transformation.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace tidy {

class frmconvrtr : public QDialog
{
    Q_OBJECT

public:
    // Modal to parent; made anew for every opening. The services outlive the dialog.
    frmconvrtr(const ConvertServices &services, QWidget *parent);

    // Convert. Stays open when it failed, with a line that says what.
    void accept() override;

private:
    void makeControls();
    void layOut();
    QWidget *firstJob();
    QWidget *secondJob();
    QWidget *fileRow(int index);
    void connectControls();
    void enableControls();
    void rnfrst();
    void transformAndRun();
    void cmdbrowse_Click(int index);
    bool refuseMissingFile(int index);
    void fail(const QString &reason);

    const ConvertServices &services_;
    QRadioButton *optjob[2];
    QRadioButton *optxml[2]; // Current Code., Select file:
    QWidget *jobs_[2];
    QComboBox *cmbinput;
    QComboBox *cmboutput;
    QLineEdit *txtfile[2]; // the XML file, the XSL file
    QPushButton *cmdbrowse[2];
    QLabel *lblxsl;
    QLabel *lblfailure;
    QPushButton *OKButton;
    QPushButton *CancelButton;
};

} // namespace tidy
