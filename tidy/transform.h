// A document and a style sheet make a result. Style sheets come from anywhere, so that one can neither reach
// the network nor write a file, reads no file that lies elsewhere, and none runs for ever.
#pragma once

#include "platform/result.h"
#include "tidy/sheet_parameters.h"
#include "tidy/tidy_messages.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <cstddef>
#include <functional>
#include <vector>

namespace tidy {

// A text that takes part, and the path it stands at or would be saved to: what it refers to (imports,
// includes, document(), entities) is looked for beside that path.
struct TransformInput
{
    QByteArray utf8;
    QString path;
};

// How much a transformation may do, in counts and not in seconds: the same sheet ends the same way on every
// machine. The usual bounds allow for documents of many megabytes and end a loop within seconds.
struct TransformBounds
{
    int depth = 2000; // templates within templates
    unsigned long instructions = 20'000'000; // of the style sheet
    unsigned long steps = 1'000'000'000; // of its expressions
    std::size_t memory = std::size_t{1} << 30; // bytes at one time; the more the larger the two texts are
    std::size_t traffic = std::size_t{64} << 30; // bytes copied in all; likewise
    int documents = 1000; // loaded by document(), imports and includes
    int messages = 10'000; // those after are left out
    qsizetype output = 256 << 20; // bytes of the result
    int seconds
        = 600; // for what is counted nowhere, such as a search in a long text; in a process of its own
};

// What the user lets a transformation do beyond what any may.
struct TransformLicence
{
    QStringList files; // that it reads though they lie elsewhere; as Transformation::refused names them
    bool newerSheets = false; // style sheets of a later version than 1.1 are carried out, as far as that goes
};

struct TransformJob
{
    TransformInput document;
    TransformInput styleSheet;
    TransformLicence licence;
    TransformBounds bounds;
    SheetParameters parameters = {}; // taken as texts, never as expressions
};

// Which text a message's line counts in.
enum class TransformPlace
{
    Nowhere, // line is 0
    Document,
    StyleSheet,
    OtherFile
};

struct TransformMessage
{
    Severity severity = Severity::Error;
    TransformPlace place = TransformPlace::Nowhere;
    int line = 0; // 1-based
    QString file; // of OtherFile only
    QString text; // one or more lines, without a final line break

    bool operator==(const TransformMessage &) const = default;
};

struct Transformation
{
    // The markup of the result's node at position 1, as a reader of HTML takes it: where the result is one
    // element and nothing else, its declaration stands at position 0 and the element at 1. The failure
    // otherwise: a text that did not parse, an error, a bound, no such node, or a licence that is missing.
    platform::Result<QByteArray> markup = platform::Failure{};

    // xsl:message and errors, in the order they came; never printed.
    std::vector<TransformMessage> messages;

    // Files in neither the folder of the document nor that of the style sheet, nor below them, nor known to
    // the system's XML catalogs, which were to be read as entities or by document(). Full paths.
    QStringList refused;

    // The style sheets of a version that is not known here, each as "sheet.xsl (version 2.0)".
    QStringList newerSheets;
};

// Each message is told when it comes, too.
Transformation transform(const TransformJob &job,
                         const std::function<void(const TransformMessage &)> &tell = {});

} // namespace tidy
