// The editor's properties: colours, fonts, options, the language of the text, and keys.
#pragma once

#include "editor/editor_draft.h"

#include <QDialog>

class QPushButton;
class QTabWidget;

namespace editor {

class PropertiesPage;

class PropertiesDialog : public QDialog
{
    Q_OBJECT

public:
    // The editor outlives the dialog. A dialog that is shown again starts from the editor as it is then, on
    // the page and in the size it was left.
    PropertiesDialog(control::CodeEditor &editor, QWidget *parent);

    void accept() override;

    // Puts what differs into effect; the editor says propertiesChanged once, or not at all.
    void apply();

protected:
    void showEvent(QShowEvent *event) override;

private:
    QPushButton *button(const char *name, const QString &caption);
    void addPage(PropertiesPage *page, const char *name, const QString &caption);
    void layOut();
    QSize usualSize() const;
    void takeFromEditor();
    void showPage();
    void showState();
    void takePending();
    PropertiesPage *currentPage() const;

    control::CodeEditor &editor_;
    EditorDraft draft_;
    QTabWidget *pages_;
    QPushButton *ok_;
    QPushButton *cancel_;
    QPushButton *apply_;
    QPushButton *defaults_;
};

} // namespace editor
