// Which of the three texts (saved, DOM, editor) are known to be equal, without comparing them.
//
// A document may be a hundred megabytes long, and each switch of view and each save question asks whether two
// of its texts are the same. Every state of the DOM and of the editor has a number; what was once found or
// made equal is remembered by these numbers. "Not known" never means "different": the caller then compares.
#pragma once

#include <QtGlobal>
#include <optional>

namespace document {

// One state of the DOM.
struct DomIdentity
{
    quint64 revision = 0;

    bool operator==(const DomIdentity &) const = default;
};

using EditorIdentity = quint64; // the editor's revision

class Identities
{
public:
    // SavedXml was just taken from the DOM, or from the editor.
    void savedFrom(DomIdentity dom);
    void savedFrom(EditorIdentity editor);

    // SavedXml is another text now, which is not known to equal either.
    void forgetSaved();

    // The DOM's text and the editor's were just found or made equal.
    void agree(DomIdentity dom, EditorIdentity editor);

    bool isSaved(DomIdentity dom) const { return savedDom_ == dom; }
    bool isSaved(EditorIdentity editor) const { return savedEditor_ == editor; }
    bool agreed(DomIdentity dom, EditorIdentity editor) const;

private:
    void share();

    std::optional<DomIdentity> savedDom_;
    std::optional<EditorIdentity> savedEditor_;
    std::optional<DomIdentity> agreedDom_;
    std::optional<EditorIdentity> agreedEditor_;
};

} // namespace document
