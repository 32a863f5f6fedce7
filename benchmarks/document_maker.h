// Documents of many shapes, so that no step is quick on one kind of document alone.
#pragma once

#include <QByteArray>
#include <QString>

#include <span>

namespace bench {

struct Shape
{
    const char *name; // as given to --shape
    const char *what;
    QByteArray (*make)(qsizetype bytes); // about that many; well-formed, the document element is "catalogue"
    const char *frequent; // text that is replaced everywhere
    int smallest; // megabytes that are measured by default, and those times ten up to a hundred
    int mostText; // megabytes: what is measured in the bare editor is no larger; 0 for no bound
};

std::span<const Shape> shapes();
const Shape *shapeNamed(const QString &name); // null when there is none

} // namespace bench
