// A small text that shows an editor's properties while they are being chosen. It cannot be edited and is
// passed over by the Tab key.
#pragma once

#include "platform/control/code_editor.h"

namespace editor {

struct ColourClass;

class SampleEditor : public control::CodeEditor
{
    Q_OBJECT

public:
    explicit SampleEditor(QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    // Frames the piece that shows the class.
    void pointAt(const ColourClass &shown);

Q_SIGNALS:
    // A piece of the text was clicked that shows this class.
    void classClicked(const QString &label);

protected:
    void changeEvent(QEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *) override { }

private:
    control::ByteRange pieceOf(const ColourClass &shown) const;
    void dressFrame();
    QSize sizeOf(int characters, int lines) const;
};

} // namespace editor
