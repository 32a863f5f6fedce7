// What the browser engine must know before the application object exists.
#pragma once

namespace browser {

// To be called once, first thing in main. Registers the preview's URL scheme and fits the engine's
// environment: no network; drawing in software where there is no screen; no sandbox for the superuser, for
// whom the engine refuses to start in one.
void prepareProcess();

} // namespace browser
