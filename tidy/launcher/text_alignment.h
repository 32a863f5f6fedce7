// Which parts of two texts are the same.
#pragma once

#include <QtGlobal>

#include <string>
#include <vector>

namespace launcher {

struct Matched
{
    qsizetype from; // in the one text
    qsizetype to; // in the other
    qsizetype size;
    bool opens; // both texts begin here
    bool closes; // both texts end with it
};

// The runs of equal characters, in the order of both. What was moved far is not found again, nor is anything
// behind a long stretch of one text that the other has not.
std::vector<Matched> matchedRuns(const std::u32string &from, const std::u32string &to);

} // namespace launcher
