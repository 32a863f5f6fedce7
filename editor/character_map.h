// "Symbols": a map of characters that are awkward to type, and a box that collects the chosen ones.
#pragma once

#include <QDialog>
#include <functional>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace editor {

class CharacterGrid;
class LargeCharacter;
class LargeShadow;

class frmCharacterMap : public QDialog
{
    Q_OBJECT

public:
    // insert receives the collected characters when "Insert" is chosen and there are any; then the map
    // closes.
    frmCharacterMap(QWidget *parent, std::function<void(const QString &)> insert);
    ~frmCharacterMap() override;
    Q_DISABLE_COPY_MOVE(frmCharacterMap)

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void fillFonts();
    void layOut();
    void connectControls();
    void showCurrent();
    void enlarge(bool wanted);
    void placeLarge();
    void insertCollected();

    std::function<void(const QString &)> insert_;
    QComboBox *cboFont;
    CharacterGrid *picCharacterMap;
    QLabel *lblName;
    QLineEdit *txtChars;
    QPushButton *cmdInsert;
    QPushButton *cmdcancel;
    LargeShadow *picShadow;
    LargeCharacter *picLarge; // above its shadow
};

} // namespace editor
