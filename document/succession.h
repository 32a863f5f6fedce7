// One document after another in the same window: what was made of the open document is a document of its own,
// and undo leads back to the one before, with its name and whatever was not saved of it.
#pragma once

#include "document/saving.h"

#include <vector>

namespace document {

class Succession
{
public:
    Succession(DocumentState &state, const Surroundings &around, WorkingFiles &files, Saving &saving);
    ~Succession();
    Succession(const Succession &) = delete;
    Succession &operator=(const Succession &) = delete;

    // In XML Mode: the text takes the place of the open document's, as one edit and as a new document, which
    // Save proposes to put at a path. What was unsaved of the document before is handed to the workspace.
    void follow(const QByteArray &text, const QString &proposedPath);

    // The editor's steps were dropped: nothing leads back any more.
    void forget() { steps_.clear(), done_ = 0; }

private:
    // What a document is besides its text.
    struct Standing
    {
        QString path;
        QString proposedPath;
        files::FileStamp stamp;
        files::FileForm form;
        QByteArray savedXml;
    };

    struct Step
    {
        QByteArray text; // of the former; undo always leads back to this
        Standing former;
        Standing latter;
    };

    Standing standing() const;
    void take(const Standing &standing, const QByteArray &text);
    void cross(int step, bool undone);
    bool returnToUnsaved();

    DocumentState &state_;
    Surroundings around_;
    WorkingFiles &files_;
    Saving &saving_;
    std::vector<Step> steps_; // in the editor, by number
    std::size_t done_ = 0; // of them; the rest is undone
};

} // namespace document
