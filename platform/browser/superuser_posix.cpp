#include "platform/browser/superuser.h"

#include <unistd.h>

namespace browser {

bool runsAsSuperuser() { return geteuid() == 0; }

} // namespace browser
