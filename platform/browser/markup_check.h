// Whether markup that a page refers to can be read at all, and what is wrong with it.
#pragma once

#include <QByteArray>
#include <QString>

namespace browser {

// The first fault as "line 3: reason"; empty for well-formed markup and for what is too large to be looked
// at.
QString markupFault(const QByteArray &xml);

} // namespace browser
