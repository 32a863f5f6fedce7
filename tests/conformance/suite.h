// A public suite of cases, each a file and what is to be thought of it.
#pragma once

#include "platform/result.h"

#include <QString>
#include <vector>

namespace conformance {

struct Case
{
    QString group; // what it is counted with
    QString id;
    QString path;
    bool isRight; // as it should be judged
};

// What was made of a case: empty when the file was accepted, else why not.
using Judge = QString (*)(const Case &);

struct Suite
{
    const char *name; // as it is asked for
    platform::Result<std::vector<Case>> (*read)(const QString &folder);
    Judge judge;
};

// The W3C's cases of XML 1.0 and 1.1, from the folder that holds xmlconf.xml or one above it.
platform::Result<std::vector<Case>> readXmlSuite(const QString &folder);
QString judgeXml(const Case &one);

} // namespace conformance
