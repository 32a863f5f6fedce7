// A field whose content was refused, made visible.
#pragma once

#include <QString>

class QLabel;
class QWidget;

namespace tree {

// Tints the field, and tells screen readers why; an empty reason takes the mark away.
void markFault(QWidget *field, const QString &reason);

// Under a field: the reason why it was refused, if it was.
QLabel *makeReason(const QString &name, QWidget *parent);

} // namespace tree
