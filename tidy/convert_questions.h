// What the user is asked when a transformation needs more than any may have.
#pragma once

#include "tidy/transform.h"

namespace dialogs {
class Dialogs;
}

namespace tidy {

// Whether the user grants what was lacking; the licence then holds it. False as well when nothing was lacking
// that could be granted.
bool grantsWhatLacked(dialogs::Dialogs &dialogs, const Transformation &done, TransformLicence &licence);

} // namespace tidy
