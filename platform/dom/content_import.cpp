// Content that comes from outside as markup.
#include "platform/dom/document.h"

#include "platform/dom/document_private.h"
#include "platform/dom/layout.h"
#include "platform/dom/names.h"
#include "platform/dom/node_factory.h"

namespace dom {

using platform::Result;

namespace {

// A document type that declares these entities, with the same replacement texts. With others it leaves room
// for declarations that cannot be had.
QByteArray declarationsOf(const Entities &entities, bool others = false)
{
    QByteArray out;
    for (auto entity = entities.cbegin(); entity != entities.cend(); ++entity) {
        QByteArray value = entity.value();
        value.replace('&', "&#38;").replace('%', "&#37;").replace('"', "&#34;");
        out += "<!ENTITY " + entity.key() + " \"" + value + "\">";
    }
    return out.isEmpty() ? out
                         : "<!DOCTYPE x " + QByteArray(others ? "SYSTEM 'urn:x' " : "") + '[' + out + "]>";
}

QByteArray withLineEnds(QByteArray markup, const QByteArray &lineEnd)
{
    if (markup.contains('\r'))
        markup.replace("\r\n", "\n").replace('\r', '\n');
    return lineEnd == "\n" ? markup : markup.replace("\n", lineEnd);
}

bool startsWithTag(QByteArrayView markup)
{
    const QString first = QString::fromUtf8(markup.first(qMin<qsizetype>(markup.size(), 8)));
    return first.startsWith(u'<') && isNCName(QStringView(first).sliced(1).left(1));
}

Result<void> judged(const QByteArray &markup)
{
    const auto error = checkWellFormed(markup);
    if (!error)
        return {};
    const QString reason = error->reason.simplified();
    return platform::Failure{error->line == 1 ? reason
                                              : QStringLiteral("%1 (line %2)").arg(reason).arg(error->line)};
}

} // namespace

Result<std::vector<Node *>> Document::importContent(const QByteArray &element)
{
    if (!startsWithTag(element)) // and so brings no declarations of its own
        return platform::Failure{QStringLiteral("This is no element")};
    const QByteArray markup = withLineEnds(element, Layout::lineEnd(*this));
    if (auto verdict = judged(declarationsOf(d->content->entities) + markup); !verdict)
        return platform::Failure{verdict.reason()};
    std::vector<Node *> nodes = NodeFactory::import(*this, markup);
    if (nodes.empty())
        return platform::Failure{QStringLiteral("There is nothing in it")};
    return nodes;
}

// As it stands, and once more with the entities that only files declare.
Result<void> Document::keepsEntitiesBounded() const
{
    auto verdict = judged(xml());
    if (verdict && !isEmpty())
        verdict = judged(declarationsOf(d->content->entities, true) + documentElement()->xml());
    return verdict;
}

} // namespace dom
