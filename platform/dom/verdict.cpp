#include "platform/dom/verdict.h"

#include "platform/dom/attribute_bound.h"
#include "platform/dom/judgement.h"
#include "platform/dom/text_place.h"
#include "platform/dom/xml11.h"
#include "platform/dom/xml_declaration.h"

#include <libxml/xmlerror.h>

#include <limits>

namespace dom {

namespace {

Fault faultAt(int code, const QString &sentence, qsizetype offset = 0)
{
    Fault fault;
    fault.code = code;
    fault.sentence = sentence;
    fault.offset = offset;
    return fault;
}

ParseError reported(const Fault &fault, QByteArrayView text)
{
    const TextPlace place = placeOf(text, fault.offset);
    ParseError error;
    error.code = fault.code;
    error.reason = fault.sentence + QLatin1Char('\n');
    error.line = place.line;
    error.position = place.position;
    error.sourceText = place.sourceText;
    error.offset = fault.offset;
    error.stopped = fault.stopped;
    if (fault.file) {
        const TextPlace inFile = placeOf(fault.file->utf8, fault.fileOffset);
        error.reason = QStringLiteral("%1 This is in the file %2, which the document takes in.\n")
                           .arg(fault.sentence, fault.file->path);
        error.file = FilePlace{fault.file->path, inFile.line, inFile.position, inFile.sourceText};
    }
    return error;
}

// What the parser does not look at: it takes a NUL for the end of the text, control characters are another
// matter in XML 1.1, and of a declaration it is content with less than there must be.
std::optional<Fault> faultBesides(const QByteArray &utf8, bool isVersion11)
{
    std::optional<Fault> first;
    const auto consider = [&first](int code, const QString &sentence, qsizetype offset) {
        if (!first || offset < first->offset)
            first = faultAt(code, sentence, offset);
    };
    if (const qsizetype nul = utf8.indexOf('\0'); nul >= 0)
        consider(XML_ERR_INVALID_CHAR, QStringLiteral("XML does not allow the character U+0000."), nul);
    if (const auto at = isVersion11 ? findRestrictedCharacter(utf8) : std::nullopt) {
        consider(XML_ERR_INVALID_CHAR,
                 QStringLiteral("XML 1.1 allows this control character only as a reference by its number."),
                 *at);
    }
    if (beginsWithDeclaration(utf8) && !documentDeclaration(utf8)) {
        consider(
            XML_ERR_XMLDECL_NOT_FINISHED,
            QStringLiteral("The XML declaration is not right: it holds a version, then an encoding if any, "
                           "then standalone if any, with blanks between them."),
            qMax(utf8.indexOf("?>"), qsizetype(0)));
    }
    return first;
}

// A document of XML 1.1 may be well-formed and yet hold, within its markup, line ends that the rest of the
// program does not know for what they are.
std::optional<Fault> refusedLineEnd(const QByteArray &utf8, const QString &baseFolder, const GoOn &goOn)
{
    const QByteArray withTheirs = asVersion10(utf8, LineEnds::AsTheyAre);
    if (withTheirs == asVersion10(utf8, LineEnds::AsBlanks))
        return std::nullopt;
    Judgement judgement(withTheirs, true, goOn);
    const Fault found = judgement.run(baseFolder);
    if (found.code == 0 || found.stopped)
        return found.stopped ? std::optional(found) : std::nullopt;
    return faultAt(
        XML_ERR_UNKNOWN_VERSION,
        QStringLiteral("The document is well-formed by the rules of XML 1.1, but within its markup here "
                       "stands a line end that only these know (U+0085 or U+2028): it can be edited "
                       "as text alone."),
        found.offset);
}

} // namespace

std::optional<ParseError> checkWellFormed(const QByteArray &utf8, const QString &baseFolder,
                                          Entities *entities, const GoOn &goOn)
{
    if (utf8.isEmpty())
        return reported(faultAt(XML_ERR_DOCUMENT_EMPTY, QStringLiteral("The document is empty.")), utf8);
    if (utf8.size() > std::numeric_limits<int>::max())
        return reported(faultAt(XML_ERR_NO_MEMORY, QStringLiteral("The document is larger than 2 GiB.")),
                        QByteArrayView(utf8).first(1));
    const auto declaration = documentDeclaration(utf8);
    const bool isVersion11 = declaration && declaration->version == "1.1";
    QByteArray judged = isVersion11 ? asVersion10(utf8, LineEnds::AsBlanks) : utf8;
    if (auto lighter = withFewerAttributes(judged))
        judged = *std::move(lighter);
    Judgement judgement(judged, isVersion11, goOn);
    const Fault &found = judgement.run(baseFolder);
    const std::optional<Fault> besides = faultBesides(utf8, isVersion11);
    if (besides && !found.stopped && (found.code == 0 || besides->offset <= found.offset))
        return reported(*besides, utf8);
    if (found.code != 0)
        return reported(found, utf8);
    if (const auto refused = isVersion11 ? refusedLineEnd(utf8, baseFolder, goOn) : std::nullopt)
        return reported(*refused, utf8);
    if (entities)
        *entities = judgement.entities();
    return std::nullopt;
}

} // namespace dom
