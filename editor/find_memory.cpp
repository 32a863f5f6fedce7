#include "editor/find_memory.h"

#include "platform/system/settings_store.h"

namespace editor {

namespace {

constexpr int longestList = 20;
const QString textsKey = QStringLiteral("find/texts");
const QString replacementsKey = QStringLiteral("find/replacements");

struct Option
{
    const char *key;
    bool control::SearchPattern::*value;
};

constexpr Option options[] = {{"find/matchCase", &control::SearchPattern::matchCase},
                              {"find/wholeWord", &control::SearchPattern::wholeWord},
                              {"find/expression", &control::SearchPattern::expression}};

} // namespace

// A text to be found has one line, so that line ends can stand between texts.
FindMemory::FindMemory(settings::SettingsStore *store) : store_(store)
{
    if (store_ == nullptr)
        return;
    texts_ = store_->text(textsKey).split(u'\n', Qt::SkipEmptyParts).mid(0, longestList);
    replacements_ = store_->text(replacementsKey).split(u'\n', Qt::SkipEmptyParts).mid(0, longestList);
    for (const Option &option : options)
        last_.*option.value = store_->text(QString::fromLatin1(option.key)) == u"1";
}

void FindMemory::rememberText(const QString &text) { remember(texts_, text, textsKey); }

void FindMemory::rememberReplacement(const QString &text) { remember(replacements_, text, replacementsKey); }

void FindMemory::remember(QStringList &list, const QString &text, const QString &key)
{
    if (text.isEmpty() || (!list.isEmpty() && list.first() == text))
        return;
    list.removeAll(text);
    list.prepend(text);
    list = list.mid(0, longestList);
    if (store_ != nullptr)
        store_->setText(key, list.join(u'\n'));
}

void FindMemory::setLast(const control::SearchPattern &pattern)
{
    for (const Option &option : options)
        if (store_ != nullptr && pattern.*option.value != last_.*option.value)
            store_->setText(QString::fromLatin1(option.key),
                            pattern.*option.value ? QStringLiteral("1") : QStringLiteral("0"));
    last_ = pattern;
}

} // namespace editor
