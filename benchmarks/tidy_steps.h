#pragma once

#include <QDir>

namespace bench {

// Converts a page of about that many megabytes in the editor, from the start of the run to the text shown,
// beside the bare tidy command on the same input with the same options.
void measureTidy(const QDir &folder, int megabytes);

} // namespace bench
