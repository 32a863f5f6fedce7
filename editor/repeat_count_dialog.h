// Asks how often the next command is to be done.
#pragma once

#include <QDialog>

class QSpinBox;

namespace editor {

class RepeatCountDialog : public QDialog
{
    Q_OBJECT

public:
    RepeatCountDialog(int proposed, QWidget *parent);

    int count() const;

private:
    QSpinBox *txtCount;
};

} // namespace editor
