// How the texts of a transformation are read: within its budget, from where they may be, and so that nothing
// of them vanishes unnoticed.
#pragma once

#include "tidy/transform_access.h"

#include <libxml/parser.h>
#include <libxslt/documents.h>

#include <memory>

namespace tidy {

class MessageCollector;

// Of one transformation; while it lives, both libraries read through it on this thread.
class TransformLoading
{
public:
    // All of it outlives this.
    TransformLoading(const TransformJob &job, MessageCollector &collector);
    ~TransformLoading();
    TransformLoading(const TransformLoading &) = delete;
    TransformLoading &operator=(const TransformLoading &) = delete;

    struct Freed
    {
        void operator()(xmlDoc *doc) const { xmlFreeDoc(doc); }
        void operator()(xmlParserCtxt *parser) const { xmlFreeParserCtxt(parser); }
    };
    using Doc = std::unique_ptr<xmlDoc, Freed>;

    // One of the two texts, which was found well-formed. Null when it grows beyond the budget, or lacks
    // something.
    Doc parse(const QByteArray &utf8, const QByteArray &address);

    // A style sheet was read: makes what it refers to addresses, and takes its version down when that is not
    // known here.
    void prepare(xmlDoc &styleSheet, const QString &path);

    // What was to be read and is not there, so that a text would miss a part; empty for nothing.
    const QString &lack() const { return lack_; }

    const QStringList &refused() const { return access_.refused(); }
    const QStringList &newerSheets() const { return newerSheets_; }

private:
    using Parser = std::unique_ptr<xmlParserCtxt, Freed>;

    static void takeOverLibraries();
    static xmlEntityPtr findEntity(void *parser, const xmlChar *name);
    static xmlParserInputPtr openEntity(const char *address, const char *publicId, xmlParserCtxtPtr parser);
    static xmlDocPtr loadDocument(const xmlChar *url, xmlDictPtr dictionary, int options, void *context,
                                  xsltLoadType type);

    static Parser makeParser(xmlDictPtr dictionary = nullptr);
    Doc read(const QByteArray &address, xmlDictPtr dictionary, int options, xsltLoadType type);
    bool holds(xmlParserCtxt &parser, const xmlEntity *entity, const QString &name);
    void lacks(xmlParserCtxt &parser, const QString &text);
    void tellUnread(const xmlParserCtxt &parser, const QString &address, Reach reach);

    TransformAccess access_;
    MessageCollector &collector_;
    QString lack_;
    QString unread_; // a document type, or a part of one
    QStringList newerSheets_;
};

} // namespace tidy
