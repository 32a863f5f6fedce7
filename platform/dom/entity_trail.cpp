#include "platform/dom/entity_trail.h"

#include <algorithm>

namespace dom {

// An unknown context was made for what the innermost known one asked for. One that ended may give its address
// to another, but not before a context below it asked for that.
const std::vector<EntityTrail::Step> &EntityTrail::comeTo(xmlParserCtxtPtr context)
{
    const auto known = std::find_if(steps_.begin(), steps_.end(),
                                    [context](const Step &step) { return step.context == context; });
    if (known == steps_.end())
        steps_.push_back({context, steps_.back().asked, nullptr});
    else
        steps_.erase(known + 1, steps_.end());
    return steps_;
}

} // namespace dom
