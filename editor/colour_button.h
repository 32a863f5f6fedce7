// A button that shows a colour and lets the user choose another.
#pragma once

#include <QPushButton>

namespace editor {

// A small field in the ground colour; with a valid ink there is writing on it. As high as the widget's text.
QIcon colourSwatch(const QWidget &on, const QColor &ground, const QColor &ink = {});
QSize swatchSize(const QWidget &on);

// The number editors give a colour, 0x00BBGGRR.
qint32 editorColour(const QColor &colour);

class ColourButton : public QPushButton
{
    Q_OBJECT

public:
    explicit ColourButton(QWidget *parent = nullptr);

    // What the colour is of, for the dialog's title and for screen readers.
    void setSubject(const QString &subject);

    // 0x00BBGGRR; a negative number follows the palette, shows followed and says so.
    void showColour(qint32 colour, const QColor &followed);

    // Opens the colour dialog over this one's window.
    void choose();

Q_SIGNALS:
    void colourChosen(qint32 colour);

private:
    QString subject_;
    QColor shown_;
};

} // namespace editor
