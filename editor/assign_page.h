// The first page of the Assigned file Preview: where the document is, which file it is assigned to, and the
// lines to put into that one.
#pragma once

#include <QWidget>

class QGroupBox;
class QLineEdit;

namespace editor {

struct HeaderLineRow;

class AssignPage : public QWidget
{
    Q_OBJECT

public:
    // location is the document's, in URL form.
    explicit AssignPage(const QString &location, QWidget *parent = nullptr);

    void showAssignedFile(const QString &path);

Q_SIGNALS:
    void browseClicked();

private:
    QLineEdit *field(const QString &name, const QString &accessibleName);
    QGroupBox *headerLines(const QString &location);
    void addHeaderLine(QGroupBox &frame, int index, const HeaderLineRow &row, const QString &location);

    QLineEdit *Text2;
};

} // namespace editor
