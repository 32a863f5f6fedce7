// The edit panel of the options dialog: one value, in the editor that its kind asks for.
#pragma once

#include "tidy/option_catalogue.h"

#include <QGroupBox>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QSpinBox;
class QStackedWidget;

namespace tidy {

class OptionsEditor : public QGroupBox
{
    Q_OBJECT

public:
    // Hidden until an option is edited.
    explicit OptionsEditor(QWidget *parent);

    // Shows the panel for an option and its current value. Nothing happens for options that the program sets
    // itself, and false comes back.
    bool edit(int index, const QString &value);

    // The option being edited; -1 while the panel is closed.
    int index() const { return index_; }

    // Hides the panel and every value editor.
    void hidcomb();

Q_SIGNALS:
    void applied(int index, const QString &value);
    void closed();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void makeEditors();
    void layOut();
    void comfive();
    void offer(QComboBox &list) const;
    void preset(OptionKind kind);
    QString editedValue() const;
    void apply();
    QWidget *fieldOf(int editor) const;

    int index_ = -1;
    int editor_ = -1; // numbered as the kinds are
    QString current_;
    QLabel *lblcurrent;
    QStackedWidget *editors_;
    QComboBox *lists_[int(OptionKind::FixedYesNo)] = {}; // of the kinds that offer values
    QLineEdit *fields_[int(OptionKind::FixedYesNo)] = {}; // of the kinds that take text
    QSpinBox *number_ = nullptr;
    QLineEdit *userDoctype_ = nullptr;
    QPushButton *cmdapply;
    QPushButton *cmdcanceledit;
};

} // namespace tidy
