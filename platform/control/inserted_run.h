// Where the text inserted last begins, kept right while the text around it changes.
#pragma once

#include <QtGlobal>

namespace control {

class InsertedRun
{
public:
    // Byte position of the first byte inserted last; -1 when nothing was inserted.
    qsizetype start() const { return start_; }

    void forget() { start_ = end_ = -1; }

    // Takes this stretch for the text inserted last.
    void set(qsizetype start, qsizetype length);

    // Text was inserted: letters typed one after the other make one run.
    void inserted(qsizetype position, qsizetype length);

    void deleted(qsizetype position, qsizetype length);

private:
    qsizetype start_ = -1;
    qsizetype end_ = -1;
};

} // namespace control
