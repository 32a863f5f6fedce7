// xe_conformance SUITE FOLDER: how many cases of a suite are judged as they should be, and which are not.
#include "suite.h"

#include <QFileInfo>
#include <QTextStream>

#include <algorithm>
#include <iterator>
#include <map>

using namespace conformance;

namespace {

constexpr Suite suites[] = {
    {"xml", readXmlSuite, judgeXml},
};

struct Count
{
    int right = 0;
    int all = 0;
};

void print(QTextStream &out, const QString &what, const Count &count)
{
    out << QStringLiteral("%1 %2 of %3").arg(what, -45).arg(count.right, 5).arg(count.all) << Qt::endl;
}

int run(const Suite &suite, const QString &folder)
{
    QTextStream out(stdout);
    const auto cases = suite.read(folder);
    if (!cases) {
        out << cases.reason() << Qt::endl;
        return 2;
    }
    std::map<QString, Count> groups;
    std::map<QString, Count> totals; // by the group's first word or words, up to the comma
    for (const Case &one : *cases) {
        const QString fault = suite.judge(one);
        const bool isAsItShould = fault.isEmpty() == one.isRight;
        for (Count *count : {&groups[one.group], &totals[one.group.section(QLatin1Char(','), 0, 0)]}) {
            ++count->all;
            count->right += isAsItShould;
        }
        if (!isAsItShould)
            out << "wrong: " << one.id << " (" << one.path
                << "): " << (fault.isEmpty() ? QStringLiteral("accepted") : fault) << Qt::endl;
    }
    for (const auto &[group, count] : groups)
        print(out, group, count);
    for (const auto &[total, count] : totals)
        print(out, QStringLiteral("All of %1").arg(total), count);
    return 0;
}

} // namespace

int main(int argc, char *argv[])
{
    const auto *suite = argc != 3 ? std::end(suites)
                                  : std::find_if(std::begin(suites), std::end(suites), [&](const Suite &one) {
                                        return qstrcmp(one.name, argv[1]) == 0;
                                    });
    if (suite == std::end(suites)) {
        QTextStream(stderr) << "xe_conformance xml FOLDER" << Qt::endl;
        return 2;
    }
    return run(*suite, QFileInfo(QFile::decodeName(argv[2])).absoluteFilePath());
}
