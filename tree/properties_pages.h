// The pages of the Node Properties dialog, one per kind of node.
#pragma once

#include "tree/properties.h"

#include <QGroupBox>

class QBoxLayout;
class QLineEdit;

namespace control {
class CodeEditor;
}

namespace tree {

class AttributeList;
struct PageKind;

class PropertiesPage : public QGroupBox
{
    Q_OBJECT

public:
    static constexpr int count = 5;
    static constexpr int noTarget = -1;

    // image: the kind of node, 1 to 5 (see label.h).
    explicit PropertiesPage(int image, QWidget *parent = nullptr);

    QString dialogCaption() const;
    int symbolTarget() const; // the symbol-target code of the data box; noTarget when it has none

    void fill(const NodeProperties &properties);
    NodeProperties properties() const;

    QLineEdit *nameField() const { return name_; } // null when the kind has no name
    QWidget *contentField() const; // attribute list or data box
    control::CodeEditor *dataBox() const { return data_; } // null on the element page
    AttributeList *attributes() const { return attributes_; } // on the element page only

Q_SIGNALS:
    void edited(QWidget *field); // the user changed something there

private:
    void addName(QBoxLayout &layout);
    void addAttributes(QBoxLayout &layout);
    void addSyntax(QBoxLayout &layout);
    void addData(QBoxLayout &layout);

    const PageKind &kind_;
    QLineEdit *name_ = nullptr;
    control::CodeEditor *data_ = nullptr;
    AttributeList *attributes_ = nullptr;
};

} // namespace tree
