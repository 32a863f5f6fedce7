// The second job of Convert and Tidy: the current text and a file, transformed one by the other.
#pragma once

#include "tidy/tidy_messages.h"
#include "tidy/transform.h"

namespace tidy {

// What the current text is; the other of the two comes from the file.
enum class CurrentTextIs
{
    Xml,
    StyleSheet
};

// The one to be transformed by the other. The failure is a file that cannot be read.
platform::Result<TransformJob> jobWithFile(CurrentTextIs role, const TransformInput &current,
                                           const QString &file);

// The messages with the line (column 1) of those that are about the current text; of others the place is put
// into the words.
std::vector<Message> messagesOfCurrent(const std::vector<TransformMessage> &messages, CurrentTextIs role,
                                       const QString &file);

// The name to propose for the result: that of the document, ending as what Tidy makes of the result does, and
// no file that is there.
QString proposedResult(const QString &document);

} // namespace tidy
