// What Quick Tags asks of the window that it inserts into.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace editor {

struct QuickTagTarget
{
    virtual ~QuickTagTarget() = default;

    // 0 the tree, 1 the editor, 2 the preview.
    virtual int currentTab() const = 0;

    // Adds a new element with these attributes, all empty, in their order: as the last child of the node that
    // is selected in the tree when that is an element, else right behind it. Does nothing when none is
    // selected. Returns why the document refuses the element; empty when it does not.
    virtual QString addElement(const QString &name, const QStringList &attributes) = 0;

    // The editor's selection, UTF-8; empty when nothing is selected.
    virtual QByteArray selectedText() const = 0;

    // Replaces it, or inserts at the caret, as one step of undo; leaves the clipboard alone.
    virtual void replaceSelection(const QByteArray &utf8) = 0;
};

} // namespace editor
