// An expression ready for use, of the PCRE2 library: translated to machine code where that is possible, and
// bounded in time, steps and memory.
#pragma once

#include "platform/control/text_search.h"

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
    bool compile(const QByteArray &expression, qsizetype ownStart, bool matchCase);

    pcre2_real_code_8 *code_ = nullptr;
    pcre2_real_match_data_8 *data_ = nullptr;
    pcre2_real_match_context_8 *context_ = nullptr;
    pcre2_real_jit_stack_8 *stack_ = nullptr;
    std::optional<PatternFault> fault_;
};

} // namespace control
