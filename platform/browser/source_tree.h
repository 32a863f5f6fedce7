// A tree of a document that names no style sheet, for those that the engine's own takes long for.
#pragma once

#include <QByteArray>

#include <optional>

namespace browser {

// A page (HTML, UTF-8) that shows the document as nested elements that open and close. Of very large ones the
// beginning, and a link to whole for the rest. Nothing where the document is not well-formed, or holds
// elements that the engine draws as a page, a picture or a formula.
std::optional<QByteArray> sourceTree(const QByteArray &xml, const QByteArray &whole);

} // namespace browser
