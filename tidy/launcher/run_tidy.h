// One run of Tidy over the exchange files. The launcher shares nothing with the editor but these files.
#pragma once

#include <QString>

namespace launcher {

// Runs the program folder's tdyex/tidy.exe on tdyex/i.txt with the options of tdyex/default.tidy and then
// tdyex/default2.tidy, which wins. When it returns, tdyex/o.txt holds what Tidy made of it, or the input
// unchanged when Tidy is missing, fails, crashes or is not done within the bound; tdyex/f.txt holds its
// messages, in the second case behind a line "Error: ...; the text stays as it is."; and tdyex/d.txt, made
// last of all, says that the others are complete. False when that could not be made. Where there is no
// tdyex/i.txt, another one took its place meanwhile, or it was deleted, nothing is left: whoever put that
// there waits for another run, or for none. The exchange is UTF-8 in both directions. Tidy does not outlive
// the calling thread.
bool runTidy(const QString &programFolder, int boundInMilliseconds);

} // namespace launcher
