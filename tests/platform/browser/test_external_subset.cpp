// What the preview makes of a document whose type declaration stands in another file.
#include "platform/browser/external_subset.h"

#include <QTest>

class TestExternalSubset : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void completes()
    {
        const std::tuple<const char *, QByteArray, QByteArray, QByteArray> rows[] = {
            {"entity and default", "<!ENTITY e 'x&#38;lt;'><!ATTLIST r a CDATA 'b'>",
             "<!DOCTYPE q SYSTEM 'a.dtd'><r>&e;</r>", "<r a=\"b\">x&lt;</r>"},
            {"own entities go first", "<!ENTITY e 'x'>",
             "<!DOCTYPE r SYSTEM 'a.dtd' [<!ENTITY e 'y'>]><r>&e;</r>", "<r>y</r>"},
            {"the rest stays", "<!ENTITY e 'x'>",
             "<?s t?><!-- c --><!DOCTYPE r SYSTEM 'a.dtd'><r> <![CDATA[&e;]]><html>&e;</html></r>",
             "<?s t?>\n<!-- c -->\n<r> <![CDATA[&e;]]><html>x</html></r>"},
            {"no declaration", "<!ENTITY e 'x'>", "<r/>", ""},
            {"none that can be had", "<!ENTITY e 'x'>", "<!DOCTYPE r SYSTEM 'b.dtd'><r/>", ""},
            {"public", "<!ENTITY e 'x'>", "<!DOCTYPE r PUBLIC 'a' 'http://a/a.dtd'><r>&nbsp;</r>", ""},
            {"faulty subset", "<!ENTITY e", "<!DOCTYPE r SYSTEM 'a.dtd'><r/>", ""},
            {"faulty document", "<!ENTITY e 'x'>", "<!DOCTYPE r SYSTEM 'a.dtd'><r>&e;", ""},
            {"entity in a file", "<!ENTITY e SYSTEM '/etc/hostname'>",
             "<!DOCTYPE r SYSTEM 'a.dtd'><r>&e;</r>", ""},
            {"declarations in a file", "<!ENTITY % e SYSTEM '/etc/hostname'>%e;",
             "<!DOCTYPE r SYSTEM 'a.dtd'><r/>", ""},
            {"endless", "<!ENTITY e '&f;'><!ENTITY f '&e;'>", "<!DOCTYPE r SYSTEM 'a.dtd'><r>&e;</r>", ""},
        };
        for (const auto &[name, subset, xml, complete] : rows) {
            const auto read = [&](const QString &systemId) {
                return systemId == u"a.dtd"_qs ? std::optional(subset) : std::nullopt;
            };
            const QByteArray expected
                = complete.isEmpty() ? xml : "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + complete + '\n';
            QCOMPARE(browser::withExternalSubset(xml, read), expected);
        }
    }
};

QTEST_GUILESS_MAIN(TestExternalSubset)
#include "test_external_subset.moc"
