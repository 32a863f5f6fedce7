// Pages for a real browser, and what it shows of them.
#pragma once

#include "platform/browser/browser_process.h"

#include <QApplication>
#include <QDir>
#include <QWebEnginePage>
#include <QtTest>
#include <optional>

namespace browser_test {

constexpr int kPatience = 15000; // ms; only ever waited out by a fault

inline const char kSheet[] = "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
                             "<xsl:import href='sub/part.xsl'/>"
                             "<xsl:template match='/'><html><body>Made <xsl:apply-templates/></body></html>"
                             "</xsl:template></xsl:stylesheet>";
inline const char kPart[]
    = "<xsl:stylesheet version='1.0' xmlns:xsl='http://www.w3.org/1999/XSL/Transform'>"
      "<xsl:template match='i'>[<xsl:value-of select='.'/>]</xsl:template></xsl:stylesheet>";

// Gives the path; makes the folders that it names.
inline QString write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

// What ask hands its function, later; maybe when nobody waits any more.
template <typename T, typename Ask>
T awaited(Ask ask)
{
    const auto answer = std::make_shared<std::optional<T>>();
    ask([answer](const T &value) { *answer = value; });
    [&] { QTRY_VERIFY_WITH_TIMEOUT(answer->has_value(), kPatience); }();
    return answer->value_or(T());
}

inline QString textOf(const QWebEnginePage *page)
{
    return awaited<QString>([page](auto take) { page->toPlainText(take); }).simplified();
}

} // namespace browser_test

#define BROWSER_TEST_MAIN(Test)                                                                              \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        browser::prepareProcess();                                                                           \
        QApplication application(argc, argv);                                                                \
        Test test;                                                                                           \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
