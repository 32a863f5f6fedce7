// Which markup a document is written in, for the editor's colours.
#pragma once

#include "platform/control/editor_control.h"

#include <QByteArray>
#include <QString>

namespace document {

// By the path's ending, else by how the text begins.
control::Language languageOf(const QString &path, const QByteArray &text);

} // namespace document
