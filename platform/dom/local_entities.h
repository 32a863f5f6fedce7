#pragma once

namespace dom {

// From now on libxml2 reads external entities and document types from local regular files of a bounded size
// only, for every user of the library in this process. Safe to call any number of times.
void allowLocalEntitiesOnly();

} // namespace dom
