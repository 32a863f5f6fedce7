// Values as people see and type them: a reference to a declared entity is shown as it is written, "&co;", and
// everything else is the text itself. A text that looks like such a reference is told from one by "amp;",
// once more than it has: the text "&co;" is shown as "&amp;co;". So every value has one look and every look
// one value; where no entity is declared all texts are shown as they are.
#pragma once

#include "platform/dom/spelling.h"
#include "platform/dom/verdict.h"

#include <functional>

namespace dom {

// Whether an entity of that name can be referred to where the value stands.
using IsEntity = std::function<bool(QByteArrayView name)>;

QString shownValue(const Value &value, const IsEntity &isEntity);
Value valueShownAs(const QString &shown, const IsEntity &isEntity);

// Of the content of an element: every internal entity.
IsEntity entitiesOfContent(const Entities &entities);

// Of an attribute whose value is written that way now: those that bring no markup along and stay within
// bounds, and those that stand there already. Both arguments outlive the answer.
IsEntity entitiesOfAttribute(const Entities &entities, QByteArrayView written);

QString shownAttribute(QByteArrayView written, const Entities &entities);
QByteArray respelledAttribute(QByteArrayView written, const QString &shown, const Entities &entities,
                              char quote);

} // namespace dom
