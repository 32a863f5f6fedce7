// The page of the markup that this text is coloured and folded as.
#pragma once

#include "editor/properties_page.h"

class QButtonGroup;

namespace editor {

class LanguagePage : public PropertiesPage
{
    Q_OBJECT

public:
    LanguagePage(EditorDraft &draft, QWidget *parent);

    void showDraft() override;
    // The language comes with the text.
    bool hasDefaults() const override { return false; }
    void restoreDefaults() override { }

private:
    QButtonGroup *languages_;
};

} // namespace editor
