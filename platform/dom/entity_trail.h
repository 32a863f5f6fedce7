// Which entity each of the parser's contexts reads: an entity in content gets one of its own, which is told
// neither whose text it reads nor where that was asked for.
#pragma once

#include <libxml/parser.h>

#include <vector>

namespace dom {

class EntityTrail
{
public:
    struct Step
    {
        xmlParserCtxtPtr context;
        const xmlEntity *reads; // null for the document itself
        const xmlEntity *asked; // the last that was asked for here
    };

    // The context of the document.
    void begin(xmlParserCtxtPtr context) { steps_ = {{context, nullptr, nullptr}}; }

    // A context asks for an entity, to read it or to put it into a value.
    void ask(xmlParserCtxtPtr context, const xmlEntity *entity)
    {
        comeTo(context);
        steps_.back().asked = entity;
    }

    // From the document to the context that the parser is in.
    const std::vector<Step> &comeTo(xmlParserCtxtPtr context);

private:
    std::vector<Step> steps_;
};

} // namespace dom
