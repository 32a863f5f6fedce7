// How many matches there are, counted beside the user's work.
#pragma once

#include "editor/match_walk.h"

#include <QObject>
#include <QTimer>
#include <optional>
#include <vector>

namespace editor {

class SearchScope;

class MatchCount : public QObject
{
    Q_OBJECT

public:
    // Belongs to parent; editor and scope outlive it.
    MatchCount(const control::CodeEditor &editor, const SearchScope &scope, QObject *parent);

    // Counts anew; nothing without a search.
    void start(std::shared_ptr<const control::TextSearch> search);
    // The text or the scope has changed: counts anew as soon as nothing happens for a while.
    void restartSoon();

    // "3 of 128" with the match that is selected, "128 matches" with another selection; with a "+" while
    // there may be more.
    QString text(const control::TextMatch &selected) const;

Q_SIGNALS:
    void changed();

private:
    void advance();

    const control::CodeEditor &editor_;
    const SearchScope &scope_;
    std::shared_ptr<const control::TextSearch> search_;
    std::optional<MatchWalk> walk_; // while counting
    std::vector<qsizetype> starts_;
    bool more_ = false;
    QTimer slices_;
    QTimer pause_;
};

} // namespace editor
