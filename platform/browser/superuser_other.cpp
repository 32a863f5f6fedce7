#include "platform/browser/superuser.h"

namespace browser {

bool runsAsSuperuser() { return false; }

} // namespace browser
