// An expression ready for use, of the PCRE2 library: translated to machine code where that is possible, and
// bounded in time, steps and memory.
#pragma once

#include "platform/control/lf_stretch.h"
#include "platform/control/text_search.h"

#include <vector>

struct pcre2_real_code_8;
struct pcre2_real_match_data_8;
struct pcre2_real_match_context_8;
struct pcre2_real_jit_stack_8;

namespace control {

class CompiledExpression
{
public:
    // The expression may be a plain text to be found in either case.
    explicit CompiledExpression(const SearchPattern &pattern);
    ~CompiledExpression();
    CompiledExpression(const CompiledExpression &) = delete;
    CompiledExpression &operator=(const CompiledExpression &) = delete;

    const std::optional<PatternFault> &fault() const { return fault_; }

    // The first match that begins from first to last, the latter included.
    SearchResult find(const SearchArea &area, qsizetype first, qsizetype last,
                      const QDeadlineTimer &deadline) const;

    int groupCount() const;
    int groupNumber(const QByteArray &name) const;
    TextMatch group(int number) const;

private:
    using Stretch = std::shared_ptr<const LfStretch>;

    bool compile(const QByteArray &expression, qsizetype ownStart, bool matchCase);
    void measureLookBack(const QByteArray &expression);
    Stretch stretchAt(const SearchArea &area, qsizetype from, qsizetype length) const;
    Stretch stretchOf(const SearchArea &area, qsizetype from, qsizetype length) const;
    int match(const LfStretch &stretch, bool whole, qsizetype from, qsizetype stop, quint32 options) const;
    void takeGroups(const LfStretch &stretch, int count) const;

    pcre2_real_code_8 *code_ = nullptr;
    pcre2_real_match_data_8 *data_ = nullptr;
    pcre2_real_match_context_8 *context_ = nullptr;
    pcre2_real_jit_stack_8 *stack_ = nullptr;
    mutable std::vector<TextMatch> groups_; // of what was found last
    bool unifies_ = false; // CR LF is one LF to it
    qsizetype lookBack_ = 0; // bytes before a place that may decide whether it matches there
    std::optional<PatternFault> fault_;
};

} // namespace control
