// Goes over all matches in a text in slices of time, so that the user can go on working.
#pragma once

#include "editor/editor_text.h"

#include <functional>
#include <memory>

namespace editor {

class MatchWalk
{
public:
    enum class State
    {
        Going,
        Done,
        TextChanged, // what was visited so far is worth nothing
        GaveUp
    };
    using Visit = std::function<void(QByteArrayView text, const control::TextMatch &match)>;

    MatchWalk(const control::CodeEditor &editor, std::shared_ptr<const control::TextSearch> search,
              const control::TextMatch &range);

    // Visits matches in order for about so many milliseconds.
    State advance(int milliseconds, const Visit &visit);
    // How much has been searched, in percent.
    int progress() const;
    const control::TextSearch &search() const { return *search_; }

private:
    const control::CodeEditor *editor_;
    std::shared_ptr<const control::TextSearch> search_;
    control::TextMatch range_;
    quint64 revision_;
    qsizetype place_;
};

} // namespace editor
