// The Assigned file Preview: shows the document through another file that refers to it.
#pragma once

#include "editor/assigned_source.h"
#include "editor/preview_file.h"
#include "platform/files/text_encoding.h"

#include <QDialog>

class QPushButton;
class QTabWidget;
class QToolBar;
class QVBoxLayout;

namespace browser {
class PreviewHandler;
class WebBrowser;
} // namespace browser

namespace editor {

class AssignPage;

class frmprview : public QDialog
{
    Q_OBJECT

public:
    // Stands over parent without blocking it, and is deleted when it is closed.
    frmprview(AssignedSource source, QWidget *parent);
    ~frmprview() override;

    // The editor of the assigned file, for what acts on editors.
    control::CodeEditor &editor() { return *CodeMax1; }

    // Where the editor stands, for what belongs below it.
    QVBoxLayout &editorLayout() { return *editorLayout_; }

public Q_SLOTS:
    // Asks for the assigned file and reads it; again until there is such a file or the question is dismissed.
    void browse();

    // On the preview's page: shows the assigned file's text as it is now, through the document as it is now.
    void refrs();

    void done(int result) override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makePages();
    QWidget *editorPage();
    QWidget *previewPage();
    void addButtons(QToolBar &bar);
    void assign(const QString &path);
    void bringCopyUpToDate();
    void unload();
    browser::PreviewHandler &handler();

    AssignedSource source_;
    PreviewFile file_;
    QString location_; // the document's, as it is shown
    QString overlaid_; // the preview copy that could not be written and is shown from memory
    files::TextEncoding encoding_; // of the assigned file
    bool loaded_ = true;

    QTabWidget *SSTab1;
    AssignPage *assignPage_;
    control::CodeEditor *CodeMax1;
    QVBoxLayout *editorLayout_ = nullptr;
    QToolBar *Toolbar3;
    browser::WebBrowser *WebBrowser1;
    QPushButton *cmdcancel;
};

} // namespace editor
