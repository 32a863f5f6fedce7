// Marks all matches in sight in the text of an editor, besides the one that is selected.
#pragma once

#include "editor/editor_text.h"

#include <QObject>
#include <QTimer>
#include <memory>

namespace editor {

class SearchScope;

// Numbers of the marks in the text, besides those of the editor itself.
inline constexpr int matchIndicator = 12;
inline constexpr int scopeIndicator = 13;

// As the engine wants them: 0x00BBGGRR.
struct MarkColours
{
    long match;
    long scope;
};

// What can be seen on the ground that the editor's text has.
MarkColours markColours(const control::CodeEditor &editor);

class MatchMarks : public QObject
{
public:
    // Belongs to parent; editor and scope outlive it.
    MatchMarks(control::CodeEditor &editor, const SearchScope &scope, QObject *parent);

    // From now on, matches of this are marked wherever the text is scrolled to; none without a search.
    void show(std::shared_ptr<const control::TextSearch> search);

private:
    // What the marks were made for.
    struct View
    {
        quint64 revision = 0;
        control::TextMatch lines;
        control::TextMatch scope;
        control::TextMatch selected;
        const control::TextSearch *search = nullptr;
        bool operator==(const View &) const = default;
    };

    View view() const;
    void update();
    void clear();
    void markIn(const View &view);

    control::CodeEditor &editor_;
    const SearchScope &scope_;
    std::shared_ptr<const control::TextSearch> search_;
    View marked_;
    QTimer soon_;
};

} // namespace editor
