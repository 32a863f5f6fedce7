// Characters that the output's encoding lacks, written as references.
#pragma once

#include "tidy/launcher/run_options.h"

namespace launcher {

// The text (UTF-8) with every character outside the alphabet as a reference, by name where that is asked for
// and HTML has one, wherever markup allows a reference. In comments, scripts, CDATA sections and names the
// characters stay as they are.
QByteArray withReferences(const QByteArray &utf8, Alphabet alphabet, bool named);

} // namespace launcher
