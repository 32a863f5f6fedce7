// The Convert and Tidy dialog: the current text through Tidy, or a document and a style sheet through a
// transformation and then through Tidy.
#pragma once

#include "tidy/convert_services.h"
#include "tidy/convert_transformation.h"
#include "tidy/transform_process.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QProgressBar;
class QPushButton;
class QRadioButton;

namespace tidy {

class frmconvrtr : public QDialog
{
    Q_OBJECT

public:
    // Modal to parent; made anew for every opening. The services outlive the dialog.
    frmconvrtr(const ConvertServices &services, QWidget *parent);

    // Convert. Stays open while a style sheet is at work, and when it failed, with a line that says what.
    void accept() override;

    // Cancel, and the close box: of a style sheet at work first, of the dialog when there is none.
    void reject() override;

private:
    void makeControls();
    void layOut();
    QWidget *firstJob();
    QWidget *secondJob();
    QWidget *fileRow(int index);
    void connectControls();
    void enableControls();
    void preselect();
    void keepChoices();
    void rnfrst();
    void startTransformation();
    void setAtWork(bool atWork);
    void transformed(const Transformation &done);
    bool takeResult(const QByteArray &markup);
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
    QPlainTextEdit *txtparameters;
    QLabel *lblxsl;
    QLabel *lblfailure;
    QProgressBar *prgwork;
    QPushButton *OKButton;
    QPushButton *CancelButton;
    TransformProcess process_;
    const InputKind offered_; // what the text was taken for
    TransformJob job_; // the last one that was started
    CurrentTextIs role_ = CurrentTextIs::Xml; // in it
};

} // namespace tidy
