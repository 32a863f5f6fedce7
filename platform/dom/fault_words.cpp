#include "platform/dom/fault_words.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace dom {

namespace {

// One code stands for several faults; then a part of the message tells them apart. {1} {2} {3} are the names
// involved, {character} the one in question, {of line} where the open element began.
struct Words
{
    int code;
    const char *message; // null: whatever it says
    const char *sentence;
};

constexpr Words table[] = {
    // The document as a whole
    {XML_ERR_DOCUMENT_EMPTY, "Start tag",
     "The document element is missing: its start tag should stand here."},
    {XML_ERR_DOCUMENT_EMPTY, nullptr, "The document is empty."},
    {XML_ERR_DOCUMENT_END, nullptr,
     "Nothing but comments and processing instructions may follow the end of the document element."},
    {XML_ERR_TAG_NOT_FINISHED, nullptr, "The element \"{1}\"{of line} is never closed."},
    {XML_ERR_TAG_NAME_MISMATCH, nullptr,
     "The element \"{1}\"{of line} is open here, but the end tag is that of \"{2}\"."},
    // Tags and attributes
    {XML_ERR_NAME_REQUIRED, "StartTag",
     "A \"<\" must be followed by the name of an element; as text it is written &lt;."},
    {XML_ERR_NAME_REQUIRED, "attribute name",
     "The name of an attribute, or the end of the tag, should stand here."},
    {XML_ERR_NAME_REQUIRED, "EntityRef", "An \"&\" must begin a reference; as text it is written &amp;."},
    {XML_ERR_NAME_REQUIRED, "EntityDecl", "The name of the entity is missing."},
    {XML_ERR_NAME_REQUIRED, "NOTATION", "The name of a notation is missing."},
    {XML_ERR_NAME_REQUIRED, "PEReference", "A \"%\" must begin the reference to a parameter entity."},
    {XML_ERR_NAME_REQUIRED, "DOCTYPE", "The name of the document element is missing in the document type."},
    {XML_ERR_NAME_REQUIRED, "for Attribute", "The name of an attribute is missing in the declaration."},
    {XML_ERR_NAME_REQUIRED, nullptr, "The name of an element is missing in the declaration."},
    {XML_ERR_ATTRIBUTE_WITHOUT_VALUE, nullptr,
     "The attribute \"{1}\" has no value: =\"...\" should follow its name."},
    {XML_ERR_ATTRIBUTE_NOT_STARTED, nullptr, "The value of an attribute must stand in quotes."},
    {XML_ERR_ATTRIBUTE_NOT_FINISHED, "too long", "The value of an attribute is longer than 1 GB."},
    {XML_ERR_ATTRIBUTE_NOT_FINISHED, nullptr, "The closing quote of an attribute's value is missing."},
    {XML_ERR_ATTRIBUTE_REDEFINED, nullptr, "The attribute \"{name}\" stands in one tag more than once."},
    {XML_ERR_LT_IN_ATTRIBUTE, "entity",
     "The entity \"{1}\" brings a \"<\" into the value of an attribute, where none may stand."},
    {XML_ERR_LT_IN_ATTRIBUTE, nullptr,
     "A \"<\" may not stand in the value of an attribute; it is written &lt;."},
    {XML_ERR_SPACE_REQUIRED, "attributes construct",
     "A blank is missing between two attributes, or the end of the tag."},
    {XML_ERR_GT_REQUIRED, "Start Tag", "The start tag of \"{1}\" has no closing \">\"."},
    {XML_ERR_GT_REQUIRED, nullptr, "A closing \">\" is missing."},
    {XML_ERR_LTSLASH_REQUIRED, nullptr, "An end tag should stand here."},
    {XML_NS_ERR_UNDEFINED_NAMESPACE, " for ",
     "The prefix \"{1}\" of the attribute \"{2}\" in the element \"{3}\" is not declared."},
    {XML_NS_ERR_UNDEFINED_NAMESPACE, nullptr, "The prefix \"{1}\" of the element \"{2}\" is not declared."},
    {XML_NS_ERR_ATTRIBUTE_REDEFINED, nullptr,
     "The attribute \"{1}\" of the namespace \"{2}\" stands in one tag more than once, under different "
     "prefixes."},
    {XML_NS_ERR_QNAME, nullptr, "A name may hold one colon only, between its prefix and the rest."},
    {XML_NS_ERR_COLON, nullptr, "The name \"{1}\" may not hold a colon."},
    {XML_NS_ERR_XML_NAMESPACE, "Empty", "The prefix \"{1}\" may not be declared as an empty namespace."},
    {XML_NS_ERR_XML_NAMESPACE, "reuse", "The namespace http://www.w3.org/2000/xmlns/ may not be declared."},
    {XML_NS_ERR_XML_NAMESPACE, "redefinition", "The prefix \"xmlns\" may not be declared."},
    {XML_NS_ERR_XML_NAMESPACE, nullptr,
     "The prefix \"xml\" and the namespace http://www.w3.org/XML/1998/namespace belong to each other alone."},
    // Text, comments, CDATA sections, instructions
    {XML_ERR_MISPLACED_CDATA_END, nullptr,
     "\"]]>\" may not stand in text; its last character is written &gt;."},
    {XML_ERR_CDATA_NOT_FINISHED, nullptr, "The CDATA section has no closing \"]]>\"."},
    {XML_ERR_COMMENT_NOT_FINISHED, nullptr, "The comment has no closing \"-->\"."},
    {XML_ERR_HYPHEN_IN_COMMENT, nullptr, "\"--\" may not stand within a comment."},
    {XML_ERR_PI_NOT_STARTED, nullptr, "\"<?\" must be followed by the target of the processing instruction."},
    {XML_ERR_PI_NOT_FINISHED, nullptr, "The processing instruction \"{1}\" has no closing \"?>\"."},
    {XML_ERR_SPACE_REQUIRED, "ParsePI",
     "A blank is missing after the target \"{1}\" of the processing instruction."},
    {XML_ERR_RESERVED_XML_NAME, "declaration",
     "The XML declaration may stand only at the very beginning of the document, before any blank or line."},
    {XML_ERR_RESERVED_XML_NAME, nullptr, "A processing instruction may not have the target \"xml\"."},
    {XML_ERR_INVALID_CHAR, "UTF-8", "These bytes are not UTF-8."},
    {XML_ERR_INVALID_CHAR, "attribute value",
     "The value of the attribute holds a character that XML does not allow."},
    {XML_ERR_INVALID_CHAR, "CharRef", "There is no character of this number that XML allows: {character}."},
    {XML_ERR_INVALID_CHAR, nullptr, "XML does not allow the character {character}."},
    {XML_ERR_INVALID_ENCODING, nullptr, "These bytes are not in the encoding of the document."},
    // References and entities
    {XML_ERR_INVALID_HEX_CHARREF, nullptr,
     "A reference to a character by its number is written with 0-9 and A-F and ends with \";\", such as "
     "&#xA0;."},
    {XML_ERR_INVALID_DEC_CHARREF, nullptr,
     "A reference to a character by its number is written with 0-9 and ends with \";\", such as &#160;."},
    {XML_ERR_INVALID_CHARREF, nullptr, "This reference to a character has no number."},
    {XML_ERR_ENTITYREF_SEMICOL_MISSING, nullptr,
     "The reference has no closing \";\"; as text \"&\" is written &amp;."},
    {XML_ERR_UNDECLARED_ENTITY, "failed to parse", "The content of the entity \"{1}\" is not well-formed."},
    {XML_ERR_UNDECLARED_ENTITY, nullptr, "The entity \"{1}\" is not declared."},
    {XML_WAR_UNDECLARED_ENTITY, nullptr, "The entity \"{1}\" is not declared."},
    {XML_ERR_UNPARSED_ENTITY, nullptr, "The entity \"{1}\" is no text and cannot be referred to here."},
    {XML_ERR_ENTITY_IS_EXTERNAL, nullptr,
     "The value of an attribute may not refer to the entity \"{1}\", which is kept in a file."},
    {XML_ERR_ENTITY_IS_PARAMETER, nullptr, "The parameter entity \"{1}\" cannot be referred to here."},
    {XML_ERR_ENTITY_LOOP, nullptr, "An entity refers to itself."},
    {XML_ERR_NOT_STANDALONE, nullptr,
     "The document says standalone=\"yes\", but an entity that it refers to is declared outside it."},
    {XML_ERR_NOT_WELL_BALANCED, nullptr, "Each element must begin and end within the same entity."},
    {XML_ERR_EXTRA_CONTENT, nullptr, "Each element must begin and end within the same entity."},
    {XML_ERR_VERSION_MISMATCH, nullptr, "A document of XML 1.0 cannot take in a file of another version."},
    // The XML declaration
    {XML_ERR_VERSION_MISSING, nullptr, "The XML declaration must begin with version=\"1.0\"."},
    {XML_ERR_UNKNOWN_VERSION, nullptr, "The version {1} of XML is not known."},
    {XML_ERR_XMLDECL_NOT_FINISHED, nullptr, "The XML declaration should end here with \"?>\"."},
    {XML_ERR_XMLDECL_NOT_STARTED, nullptr, "An XML declaration should stand here."},
    {XML_ERR_ENCODING_NAME, nullptr, "The encoding has no proper name."},
    {XML_ERR_UNSUPPORTED_ENCODING, nullptr, "The encoding \"{1}\" is not known."},
    {XML_ERR_UNKNOWN_ENCODING, nullptr, "The encoding is not known."},
    {XML_ERR_MISSING_ENCODING, nullptr,
     "The declaration at the beginning of a file that is taken in must name its encoding."},
    {XML_ERR_STANDALONE_VALUE, nullptr, "The value of standalone can only be \"yes\" or \"no\"."},
    {XML_ERR_EQUAL_REQUIRED, nullptr, "A \"=\" is missing."},
    {XML_ERR_STRING_NOT_STARTED, nullptr, "The value must stand in quotes."},
    {XML_ERR_STRING_NOT_CLOSED, nullptr,
     "The closing quote is missing, or the value holds what may not stand there."},
    // The document type
    {XML_ERR_DOCTYPE_NOT_FINISHED, nullptr,
     "The document type declaration is not right here, or has no closing \">\"."},
    {XML_ERR_LITERAL_NOT_STARTED, nullptr, "A name of a file or a public name must stand in quotes."},
    {XML_ERR_LITERAL_NOT_FINISHED, nullptr,
     "The closing quote of the file's name or public name is missing, or it holds what may not stand there."},
    {XML_ERR_URI_REQUIRED, nullptr, "The name of the file is missing."},
    {XML_ERR_PUBID_REQUIRED, nullptr, "The public name is missing after PUBLIC."},
    {XML_ERR_URI_FRAGMENT, nullptr, "The name of the file may not have a part that begins with \"#\"."},
    {XML_ERR_SPACE_REQUIRED, nullptr, "A blank is missing."},
    {XML_ERR_VALUE_REQUIRED, nullptr, "The value of the entity is missing."},
    {XML_ERR_ENTITY_NOT_STARTED, nullptr, "The value of the entity must stand in quotes."},
    {XML_ERR_ENTITY_NOT_FINISHED, "not terminated",
     "The declaration of the entity \"{1}\" has no closing \">\"."},
    {XML_ERR_ENTITY_NOT_FINISHED, nullptr, "The closing quote of the entity's value is missing."},
    {XML_ERR_ENTITY_CHAR_ERROR, nullptr,
     "In the value of an entity \"&\" and \"%\" can only begin references; they are written &#38; and "
     "&#37;."},
    {XML_ERR_ENTITY_PE_INTERNAL, nullptr,
     "Within a declaration in the document itself no parameter entity may be referred to."},
    {XML_ERR_PEREF_IN_INT_SUBSET, nullptr,
     "Within a declaration in the document itself no parameter entity may be referred to."},
    {XML_ERR_PEREF_NO_NAME, nullptr, "A \"%\" must begin the reference to a parameter entity."},
    {XML_ERR_PEREF_SEMICOL_MISSING, nullptr, "The reference to a parameter entity has no closing \";\"."},
    {XML_ERR_PEREF_AT_EOF, nullptr, "A reference to a parameter entity is cut off."},
    {XML_ERR_ATTLIST_NOT_STARTED, nullptr, "The type of the attribute is missing, or no type there is."},
    {XML_ERR_ATTLIST_NOT_FINISHED, nullptr, "The list of an attribute's values has no closing \")\"."},
    {XML_ERR_NMTOKEN_REQUIRED, nullptr, "A value is missing in the list of an attribute's values."},
    {XML_ERR_NOTATION_NOT_STARTED, nullptr, "The name of the notation, or its \"(\", is missing."},
    {XML_ERR_NOTATION_NOT_FINISHED, nullptr, "The declaration of a notation is not closed."},
    {XML_ERR_NOTATION_PROCESSING, nullptr, "The notation \"{1}\" has neither a public nor a system name."},
    {XML_ERR_MIXED_NOT_STARTED, nullptr,
     "A content model with #PCDATA must go on with \"|\" or end with \")\" or \")*\"."},
    {XML_ERR_PCDATA_REQUIRED, nullptr, "#PCDATA should stand here."},
    {XML_ERR_ELEMCONTENT_NOT_STARTED, "EMPTY",
     "The content model must be EMPTY, ANY, or stand in parentheses."},
    {XML_ERR_ELEMCONTENT_NOT_STARTED, nullptr, "A name or \"(\" should stand here in the content model."},
    {XML_ERR_ELEMCONTENT_NOT_FINISHED, nullptr,
     "A \",\", \"|\" or \")\" should stand here in the content model."},
    {XML_ERR_SEPARATOR_REQUIRED, nullptr, "\",\" and \"|\" may not be mixed within one pair of parentheses."},
    {XML_ERR_CONDSEC_INVALID, nullptr, "The conditional section must go on with \"[\"."},
    {XML_ERR_CONDSEC_INVALID_KEYWORD, nullptr, "A conditional section must be INCLUDE or IGNORE."},
    {XML_ERR_CONDSEC_NOT_FINISHED, nullptr, "The conditional section has no closing \"]]>\"."},
    {XML_ERR_EXT_SUBSET_NOT_FINISHED, nullptr, "This is no declaration, or one that is not complete."},
    {XML_ERR_ENTITY_BOUNDARY, nullptr, "A declaration must begin and end within the same entity."},
    {XML_ERR_INTERNAL_ERROR, "Markup declaration", "This is no declaration, or one that is not complete."},
    {XML_ERR_INTERNAL_ERROR, "Excessive depth", "Elements stand within each other too deep."},
    {XML_ERR_NAME_TOO_LONG, nullptr, "The name is too long."},
    {XML_ERR_NO_MEMORY, nullptr, "There is not enough memory to judge the document."},
};

QString text(const char *utf8) { return QString::fromUtf8(utf8 ? utf8 : "").left(200); }

QString characterName(int number)
{
    if (number < 0 || number > 0x10FFFF)
        return QStringLiteral("beyond U+10FFFF");
    return QStringLiteral("U+%1").arg(number, 4, 16, QLatin1Char('0')).toUpper();
}

// The name as it stands in the document: an attribute's prefix comes first where it has one.
QString fullName(const xmlError &error)
{
    return error.str2 ? text(error.str1) + QLatin1Char(':') + text(error.str2) : text(error.str1);
}

const char *wordsFor(const xmlError &error)
{
    for (const Words &words : table) {
        if (words.code == error.code
            && (!words.message || std::strstr(error.message ? error.message : "", words.message)))
            return words.sentence;
    }
    return "The document is not well-formed here.";
}

} // namespace

QString faultSentence(const xmlError &error, std::optional<qint64> openedAt)
{
    const std::pair<QLatin1String, QString> places[] = {
        {QLatin1String("{of line}"), openedAt ? QStringLiteral(" of line %1").arg(*openedAt) : QString()},
        {QLatin1String("{character}"), characterName(error.int1)},
        {QLatin1String("{name}"), fullName(error)},
        {QLatin1String("{1}"), text(error.str1)},
        {QLatin1String("{2}"), text(error.str2)},
        {QLatin1String("{3}"), text(error.str3)},
    };
    QString sentence = QString::fromUtf8(wordsFor(error));
    // One pass, so that a name that looks like a place stays a name.
    QString out;
    for (qsizetype at = 0; at < sentence.size();) {
        const auto *place = std::find_if(std::begin(places), std::end(places), [&](const auto &one) {
            return QStringView(sentence).sliced(at).startsWith(one.first);
        });
        if (place == std::end(places)) {
            out += sentence[at++];
        } else {
            out += place->second;
            at += place->first.size();
        }
    }
    return out;
}

} // namespace dom
