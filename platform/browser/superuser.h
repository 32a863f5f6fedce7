// Whether this process runs as the system's superuser.
#pragma once

namespace browser {

bool runsAsSuperuser();

} // namespace browser
