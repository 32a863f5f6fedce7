// Insert: one family of five kinds, which differ by a row of the table.
#include "tree/node_commands.h"

#include <algorithm>

namespace tree {

namespace {

using Result = platform::Result<dom::Node *>;

struct Insertion
{
    dom::NodeKind kind;
    const char *name; // of the step
    Result (*create)(dom::Document &document);
};

constexpr Insertion insertions[] = {
    {dom::NodeKind::Element, "Insert Element",
     [](dom::Document &document) { return document.createElement(QStringLiteral("Element")); }},
    {dom::NodeKind::Text, "Insert Text",
     [](dom::Document &document) { return document.createTextNode(QStringLiteral("Text")); }},
    {dom::NodeKind::CData, "Insert CDATA",
     [](dom::Document &document) { return document.createCDATASection(QStringLiteral("Data")); }},
    {dom::NodeKind::Comment, "Insert Comment",
     [](dom::Document &document) { return document.createComment(QStringLiteral("Comment")); }},
    {dom::NodeKind::ProcessingInstruction, "Insert Processing Instruction",
     [](dom::Document &document) {
         return document.createProcessingInstruction(QStringLiteral("Instruction"), {});
     }},
};

} // namespace

void NodeCommands::insert(dom::NodeKind kind)
{
    const QModelIndex selected = face_.selected();
    if (!model_.GetNodepar(selected))
        return;
    for (const Insertion &row : insertions) {
        if (row.kind != kind)
            continue;
        report(run(QLatin1String(row.name), [&](NodeStep &step) -> platform::Result<void> {
            const Result made = row.create(document_);
            return made ? insertAt(selected, *made, step) : platform::Failure{made.reason()};
        }));
    }
}

platform::Result<void> NodeCommands::insertElement(const QString &name, const QStringList &attributes)
{
    const QModelIndex selected = face_.selected();
    if (!model_.GetNodepar(selected))
        return {};
    QStringList names = attributes;
    names.prepend(name);
    auto inserted = run(QStringLiteral("Insert %1").arg(name), [&](NodeStep &step) -> platform::Result<void> {
        const Result made = document_.createElement(name);
        if (!made)
            return platform::Failure{made.reason()};
        auto done = insertAt(selected, *made, step);
        for (qsizetype i = 0; done && i < attributes.size(); ++i)
            done = document_.setAttribute(*made, attributes[i], QString());
        if (!done)
            return done;
        const auto stray = std::find_if(names.begin(), names.end(),
                                        [made](const QString &used) { return !isPrefixBound(*made, used); });
        if (stray != names.end()) // the document would not parse
            return platform::Failure{QStringLiteral("The prefix of \"%1\" is not declared here").arg(*stray)};
        return {};
    });
    report(inserted);
    return inserted;
}

platform::Result<void> NodeCommands::insertAt(const QModelIndex &selected, dom::Node *node, NodeStep &step)
{
    dom::Node *at = model_.GetNodepar(selected);
    const bool below = isElement(selected);
    auto done = below ? document_.appendChild(at, node)
                      : document_.insertBefore(at->parent(), node, at->nextSibling());
    if (done && below)
        setOpen(selected, true, step);
    return done;
}

} // namespace tree
