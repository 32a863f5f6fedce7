// Markup on the system clipboard.
#pragma once

#include <QByteArray>

namespace app {

// Offers UTF-8 markup as text to other programs. It becomes text only when one asks for it.
void putMarkupOnClipboard(const QByteArray &markup);

} // namespace app
