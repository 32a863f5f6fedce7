// The word that the start-up window and the About box step through.
#pragma once

#include <QString>

namespace app {

inline constexpr int wordInterval = 500; // milliseconds between two words

// The word after this one: XML, XSL, XSD, XSLT, FO and XML again. Any other text stays as it is.
QString nextWord(const QString &word);

} // namespace app
