#include "editor/language_page.h"

#include <QButtonGroup>
#include <QLabel>
#include <QRadioButton>
#include <QVBoxLayout>

namespace editor {

namespace {

constexpr struct
{
    control::Language language;
    const char *name;
    const char *caption;
} table[] = {
    {control::Language::Plain, "optPlain", "&Plain text, without colours and folding"},
    {control::Language::Xml, "optXml", "&XML"},
    {control::Language::Html, "optHtml", "&HTML, with its scripts"},
};

} // namespace

LanguagePage::LanguagePage(EditorDraft &draft, QWidget *parent)
    : PropertiesPage(draft, parent), languages_(new QButtonGroup(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(tr("This text is coloured and folded as"), this));
    for (const auto &row : table) {
        auto *button = new QRadioButton(tr(row.caption), this);
        button->setObjectName(QString::fromLatin1(row.name));
        languages_->addButton(button, int(row.language));
        layout->addWidget(button);
    }
    auto *hint = new QLabel(tr("The choice belongs to the text that is open now. The next document that is "
                               "opened or saved under another name is coloured as its name and its beginning "
                               "say."),
                            this);
    hint->setWordWrap(true);
    layout->addWidget(hint);
    layout->addStretch();
    connect(languages_, &QButtonGroup::idClicked, this, [this](int language) {
        draft_.language = control::Language(language);
        Q_EMIT changed();
    });
}

void LanguagePage::showDraft() { languages_->button(int(draft_.language))->setChecked(true); }

} // namespace editor
