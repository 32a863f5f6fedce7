#include "document/succession.h"

#include "document/language.h"
#include "platform/files/file_helpers.h"

namespace document {

Succession::Succession(DocumentState &state, const Surroundings &around, WorkingFiles &files, Saving &saving)
    : state_(state), around_(around), files_(files), saving_(saving)
{
    around_.editor.tellCrossing([this](int step, bool undone) { cross(step, undone); });
    saving_.askOfFormer([this] { return returnToUnsaved(); });
}

Succession::~Succession()
{
    around_.editor.tellCrossing({});
    saving_.askOfFormer({});
}

void Succession::follow(const QByteArray &text, const QString &proposedPath)
{
    if (saving_.isChanged())
        saving_.giveUp();
    steps_.resize(done_); // an edit cuts off what was undone
    Standing latter;
    latter.path = files_.makefile();
    if (files::parentFolderOf(proposedPath) != state_.temporaryFolder) // nobody looks for a document there
        latter.proposedPath = proposedPath;
    steps_.push_back({around_.editor.text(), standing(), latter});
    around_.editor.replaceDocument(text, int(done_));
    ++done_;
    take(latter, text);
}

Succession::Standing Succession::standing() const
{
    return {state_.CurrentFilePath, state_.proposedPath, state_.stamp, state_.form, state_.SavedXml};
}

void Succession::take(const Standing &standing, const QByteArray &text)
{
    files_.kiltmpfyl();
    files_.setCurrentFile(standing.path);
    state_.proposedPath = standing.proposedPath;
    state_.stamp = standing.stamp;
    state_.form = standing.form;
    state_.SavedXml = standing.savedXml;
    state_.known.forgetSaved();
    around_.editor.setLanguage(languageOf(state_.likelyPath(), text));
    around_.workspace.fileNote({});
    saving_.showTitle();
}

// Undo or redo has crossed a step; the editor holds the other text by now.
void Succession::cross(int number, bool undone)
{
    const auto index = std::size_t(number);
    if (index >= steps_.size() || index != (undone ? done_ - 1 : done_))
        return;
    Step &step = steps_[index];
    (undone ? step.latter : step.former) = standing();
    done_ = undone ? index : index + 1;
    take(undone ? step.former : step.latter, around_.editor.text());
}

// Before the window lets the document go: the last of those before it that is unsaved is shown again, so that
// it can be asked about and saved as any other. False when there is none.
bool Succession::returnToUnsaved()
{
    std::size_t index = done_;
    while (index > 0 && steps_[index - 1].text == steps_[index - 1].former.savedXml)
        --index;
    if (index == 0)
        return false;
    around_.workspace.selectTab(XmlMode);
    while (done_ >= index && around_.editor.canUndo())
        around_.editor.undo();
    return done_ < index;
}

} // namespace document
