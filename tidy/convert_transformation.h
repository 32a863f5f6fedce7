// The second job of Convert and Tidy: the current text and a file, transformed one by the other.
#pragma once

#include "tidy/transform.h"

namespace tidy {

// What the current text is; the other of the two comes from the file.
enum class CurrentTextIs
{
    Xml,
    StyleSheet
};

// Transforms the one by the other. The failure is a file that cannot be read, or what transform() says.
Transformation transformWithFile(CurrentTextIs role, const TransformInput &current, const QString &file);

// The messages with the line (column 1) of those that are about the current text; of others the place is put
// into the words.
std::vector<Message> messagesOfCurrent(const std::vector<TransformMessage> &messages, CurrentTextIs role,
                                       const QString &file);

} // namespace tidy
