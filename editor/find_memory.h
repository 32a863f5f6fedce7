// What was searched for and put in its place: shared by all find bars, and kept between runs.
#pragma once

#include "platform/control/text_search.h"

#include <QStringList>

namespace settings {
class SettingsStore;
}

namespace editor {

class FindMemory
{
public:
    // Without a store nothing outlives the run. The store outlives this.
    explicit FindMemory(settings::SettingsStore *store = nullptr);

    // The latest first, twenty at most.
    const QStringList &texts() const { return texts_; }
    const QStringList &replacements() const { return replacements_; }
    // An empty text is not remembered.
    void rememberText(const QString &text);
    void rememberReplacement(const QString &text);

    // What Find Next looks for; its text is empty until something was searched for in this run.
    const control::SearchPattern &last() const { return last_; }
    void setLast(const control::SearchPattern &pattern);

private:
    void remember(QStringList &list, const QString &text, const QString &key);

    settings::SettingsStore *store_;
    QStringList texts_;
    QStringList replacements_;
    control::SearchPattern last_;
};

} // namespace editor
