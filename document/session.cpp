#include "document/session.h"

namespace document {

Session::Session(const Surroundings &around)
    : parsing_(state_, around), files_(state_, around), saving_(state_, around, files_),
      succession_(state_, around, files_, saving_),
      life_(state_, around, parsing_, files_, saving_, succession_), views_(state_, around, parsing_, files_),
      encodings_(state_, around, parsing_, saving_, life_)
{ }

} // namespace document
