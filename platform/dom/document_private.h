// What a document holds; must not be included outside this folder.
#pragma once

#include "platform/dom/change.h"
#include "platform/dom/document.h"
#include "platform/dom/source.h"

#include <deque>
#include <optional>
#include <vector>

namespace dom {

// One loaded text and everything made of it.
struct Content
{
    std::deque<Source> sources; // the loaded text first; nodes point into them
    std::deque<Node> nodes; // every node ever made since the load: undo may bring it back
    Node *documentNode = nullptr;
    Entities entities;
    QByteArray lineEnd; // what the text's lines end with; found when first needed
    std::optional<QHash<QByteArray, bool>> declaredSpaces; // see declared_space.h; found when first needed
};

struct Document::Private
{
    explicit Private(Document &document) : changes(document) { noSource.document = owner = &document; }

    Node *newNode() { return &content->nodes.emplace_back(); }
    Source *newSource(const QByteArray &utf8)
    {
        Source &source = content->sources.emplace_back();
        source.document = owner;
        source.utf8 = utf8;
        return &source;
    }
    void startAfresh(); // the content so far becomes the former one, unless it was empty
    std::shared_ptr<Content> emptyContent();
    void fill(const QByteArray &utf8, const Entities &entities); // the content, which is empty

    Document *owner = nullptr;
    Source noSource; // of nodes made by an edit
    std::shared_ptr<Content> content; // shared with the changes that exchange it
    std::shared_ptr<Content> former; // kept for a tree that still shows it
    Changes changes;
    Observer *observer = nullptr;
    quint64 revision = 1;
    quint64 lastRevision = 1; // revisions are never used twice
    bool inCommand = false;
    quint64 revisionBefore = 0; // when the command began
};

} // namespace dom
