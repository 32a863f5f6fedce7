#pragma once

#include <QByteArray>

namespace bench {

// A catalogue-like document of about that many bytes: records of a few lines each below one document element.
QByteArray makeCatalogue(qsizetype bytes);

} // namespace bench
