#include "tidy/option_catalogue.h"

namespace tidy {

namespace {

using enum OptionTab;
using Kind = OptionKind;

// clang-format off
constexpr Option table[] = {
    {"add-xml-decl", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should add the XML declaration when outputting XML or "
     "XHTML. Where the input has such a declaration already, this option changes nothing. The "
     "declaration is always written when the output is in an encoding that XML does not take "
     "for granted."},
    {"add-xml-space", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should add xml:space=\"preserve\" to elements such as "
     "<PRE>, <STYLE> and <SCRIPT> when generating XML. Whitespace in such elements is then "
     "kept by an XML parser that does not know the DTD."},
    {"assume-xml-procins", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should change the parsing of processing instructions to "
     "require ?> as the terminator rather than >. It is set by itself when the input is XML."},
    {"bare", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should strip Microsoft specific HTML from Word 2000 "
     "documents, and output spaces rather than non-breaking spaces where they exist in the "
     "input."},
    {"break-before-br", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should output a line break before each <BR> element."},
    {"clean", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should strip out surplus presentational tags and "
     "attributes replacing them by style rules and structural markup as appropriate. Among "
     "these are <FONT>, <CENTER> and the like. The style rules stand in a style element that "
     "Tidy adds to the head."},
    {"drop-empty-paras", "yes", Markup, Kind::YesNo,
     "This option specifies if Tidy should discard empty paragraphs. If set to no, each empty "
     "paragraph is replaced by a pair of <BR> elements, because HTML 4 does not allow empty "
     "paragraphs."},
    {"drop-font-tags", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should discard <FONT> and <CENTER> tags rather than "
     "creating the corresponding style rules, but only if the clean option is also set to "
     "yes. Present versions of Tidy no longer know this option: there the clean option "
     "decides alone."},
    {"drop-proprietary-attributes", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should strip out proprietary attributes, such as MS data "
     "binding attributes. Attributes that the version of HTML being written does not know may "
     "go as well."},
    {"enclose-block-text", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should insert a <P> element to enclose any text it finds "
     "in any element that allows mixed content for HTML transitional but not HTML strict."},
    {"enclose-text", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should enclose any text it finds in the body element "
     "within a <P> element. This helps when existing HTML is to be used with a style sheet."},
    {"escape-cdata", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should convert <![CDATA[]]> sections to normal text."},
    {"fix-backslash", "yes", Markup, Kind::YesNo,
     "This option specifies if Tidy should replace backslash characters \"\\\" in URLs by "
     "forward slashes \"/\"."},
    {"fix-bad-comments", "yes", Markup, Kind::YesNo,
     "This option specifies if Tidy should replace unexpected hyphens with \"=\" characters "
     "when it comes across adjacent hyphens. Adjacent hyphens are not allowed within the "
     "comments of XML and XHTML, and were not in earlier versions of HTML."},
    {"fix-uri", "yes", Markup, Kind::YesNo,
     "This option specifies if Tidy should check attribute values that carry URIs for illegal "
     "characters and if such are found, escape them as HTML 4 recommends."},
    {"hide-comments", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should print out comments. If set to yes, comments are "
     "left out of the output."},
    {"hide-endtags", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should omit optional end-tags when generating the pretty "
     "printed markup. Present versions of Tidy call this option omit-optional-tags and leave "
     "out the start-tags as well that may be left out, those of <HTML>, <HEAD> and <BODY> "
     "among them. It is ignored when the output is XML."},
    {"indent-cdata", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should indent <![CDATA[]]> sections."},
    {"input-xml", "no", Markup, Kind::FixedYesNo,
     "This option specifies if Tidy should use the XML parser rather than the error "
     "correcting HTML parser. The system sets this option itself, from the kind of the "
     "current code."},
    {"join-classes", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should combine class names to generate a single new class "
     "name, if multiple class assignments are detected on an element."},
    {"join-styles", "yes", Markup, Kind::YesNo,
     "This option specifies if Tidy should combine styles to generate a single new style, if "
     "multiple style values are detected on an element."},
    {"logical-emphasis", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should replace any occurrence of <I> by <EM> and any "
     "occurrence of <B> by <STRONG>. In both cases the attributes stay as they are. This "
     "option can be set independently of the clean option."},
    {"lower-literals", "yes", Markup, Kind::YesNo,
     "This option specifies if Tidy should convert the value of an attribute that takes a "
     "list of predefined values to lower case. This is required for XHTML documents."},
    {"merge-divs", "yes", Markup, Kind::YesNo,
     ""},
    {"ncr", "yes", Markup, Kind::YesNo,
     "This option specifies if Tidy should allow numeric character references."},
    {"numeric-entities", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should output entities other than the built-in HTML "
     "entities (&amp;, &lt;, &gt; and &quot;) in the numeric rather than the named entity "
     "form. Only entities that fit the DOCTYPE declaration being written are used. What the "
     "encoding of the output can hold is written as the character itself."},
    {"output-html", "no", Markup, Kind::FixedYesNo,
     "This option specifies if Tidy should pretty print output, writing it as HTML. The "
     "system sets this option itself, from the kind of output that was chosen."},
    {"output-xhtml", "no", Markup, Kind::FixedYesNo,
     "This option specifies if Tidy should generate pretty printed output, writing it as "
     "extensible HTML. The DOCTYPE and the default namespace are set to those of XHTML. Tag "
     "and attribute names keep the case that XHTML wants whatever other options say. The "
     "system sets this option itself, from the kind of output that was chosen."},
    {"output-xml", "no", Markup, Kind::FixedYesNo,
     "This option specifies if Tidy should pretty print output, writing it as well-formed "
     "XML. Entities that XML 1.0 does not define are written as numeric entities, so that an "
     "XML parser can read them. The case of tags and attributes stays as it is whatever other "
     "options say. The system sets this option itself, from the kind of output that was "
     "chosen."},
    {"punctuation-wrap", "no", Markup, Kind::YesNo,
     ""},
    {"quote-ampersand", "yes", Markup, Kind::YesNo,
     "This option specifies if Tidy should output unadorned & characters as &amp;."},
    {"quote-marks", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should output \" characters as &quot; as is preferred by "
     "some editing environments. The apostrophe is then written as &#39;, because many "
     "browsers do not know &apos;."},
    {"quote-nbsp", "yes", Markup, Kind::YesNo,
     "This option specifies if Tidy should output non-breaking space characters as entities, "
     "rather than as the Unicode character value 160 (decimal)."},
    {"replace-color", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should replace numeric values in color attributes by "
     "HTML/XHTML color names where defined, e.g. replace \"#ffffff\" with \"white\"."},
    {"show-body-only", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should print only the contents of the body tag as an HTML "
     "fragment. Useful when a whole page is to become a part of another one. It is ignored "
     "when the output is XML."},
    {"split", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should create a sequence of slides from the input, "
     "splitting the markup prior to each successive <H2>. The slides would be written to "
     "files of their own. Present versions of Tidy no longer know this option."},
    {"uppercase-attributes", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should output attribute names in upper case. If set to "
     "no, they are written in lower case, except where the input is XML: its names keep their "
     "case."},
    {"uppercase-tags", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should output tag names in upper case. If set to no, they "
     "are written in lower case, except where the input is XML: its names keep their case."},
    {"vertical-space", "no", Markup, Kind::YesNo,
     ""},
    {"word-2000", "no", Markup, Kind::YesNo,
     "This option specifies if Tidy should go to great pains to strip out all the surplus "
     "stuff Microsoft Word 2000 inserts when you save Word documents as \"Web pages\". Embedded "
     "images and VML are not taken care of. Consider having Word save a filtered web page "
     "instead."},
    {"doctype", "auto", Markup, Kind::Doctype,
     "This option specifies the DOCTYPE declaration generated by you. If set to \"omit\" the "
     "output won't contain a DOCTYPE declaration. If set to \"auto\" (the default) Tidy will "
     "use an educated guess based upon the contents of the document. If set to \"strict\", Tidy "
     "will set the DOCTYPE to the strict DTD. If set to \"loose\", the DOCTYPE is set to the "
     "loose (transitional) DTD. Alternatively, Tidy can supply a string for the formal public "
     "identifier (FPI)."},
    {"repeated-attributes", "keep-last", Markup, Kind::Repeat,
     "This option specifies if Tidy should keep the first or last attribute, if an attribute "
     "is repeated, e.g. has two align attributes."},
    {"alt-text", "", Markup, Kind::Text,
     "This option specifies the default \"alt=\" text Tidy uses for <IMG> attributes. It is "
     "used where the attribute is missing. Take care: whether people who cannot see the "
     "images can use the document remains your responsibility."},
    {"new-blocklevel-tags", "", Markup, Kind::TagList,
     "This option specifies new block-level tags. Give a list of tag names separated by "
     "blanks or commas. Unless new tags are declared, Tidy refuses to write tidied markup for "
     "an input that holds unknown ones. The content of elements such as <TABLE>, <UL>, <OL> "
     "and <DL> cannot be changed this way. This option is ignored when the input is XML."},
    {"new-empty-tags", "", Markup, Kind::TagList,
     "This option specifies new empty inline tags. Give a list of tag names separated by "
     "blanks or commas. Unless new tags are declared, Tidy refuses to write tidied markup for "
     "an input that holds unknown ones. Declare an empty tag as inline or block-level too. "
     "This option is ignored when the input is XML."},
    {"new-inline-tags", "", Markup, Kind::TagList,
     "This option specifies new non-empty inline tags. Give a list of tag names separated by "
     "blanks or commas. Unless new tags are declared, Tidy refuses to write tidied markup for "
     "an input that holds unknown ones. This option is ignored when the input is XML."},
    {"new-pre-tags", "", Markup, Kind::TagList,
     "This option specifies new tags that are to be processed in exactly the same way as "
     "HTML's <PRE> element. Give a list of tag names separated by blanks or commas. Unless "
     "new tags are declared, Tidy refuses to write tidied markup for an input that holds "
     "unknown ones. Elements that hold CDATA cannot be added. This option is ignored when the "
     "input is XML."},
    {"show-warnings", "yes", Warnings, Kind::YesNo,
     "This option specifies if Tidy should suppress warnings. Without them a few errors are "
     "easier to find among a flurry of messages."},
    {"show-errors", "6", Warnings, Kind::Number,
     "This option specifies the number Tidy uses to determine if further errors should be "
     "shown. If set to 0, then no errors are shown."},
    {"error-file", "", Warnings, Kind::Text,
     "This option specifies the error file Tidy uses for errors and warnings. The system "
     "keeps Tidy's messages in a file of its own, whatever is named here."},
    {"indent", "no", Layout, Kind::AutoYesNo,
     "This option specifies if Tidy should indent block-level tags. If set to \"auto\", this "
     "option causes Tidy to decide whether or not to indent the content of tags such as "
     "TITLE, H1-H6, LI, TD, TD, or P depending on whether or not the content includes a "
     "block-level element. You are advised to avoid setting indent to yes as this can expose "
     "layout bugs in some browsers."},
    {"indent-attributes", "no", Layout, Kind::YesNo,
     "This option specifies if Tidy should begin each attribute on a new line."},
    {"literal-attributes", "no", Layout, Kind::YesNo,
     "This option specifies if Tidy should ensure that whitespace characters within attribute "
     "values are passed through unchanged. If set to no, line breaks and tabs become blanks, "
     "and several blanks in a row become one. Unless you choose no, they stay as they are."},
    {"markup", "yes", Layout, Kind::YesNo,
     "This option specifies if Tidy should generate a pretty printed version of the markup. "
     "No pretty printed version is made where severe errors are found, unless the "
     "force-output option is set."},
    {"wrap-asp", "yes", Layout, Kind::YesNo,
     "This option specifies if Tidy should line wrap text contained within ASP pseudo "
     "elements, which look like: <% ... %>."},
    {"wrap-attributes", "no", Layout, Kind::YesNo,
     "This option specifies if Tidy should line wrap attribute values, for easier editing. A "
     "value that makes its line longer than the wrap option allows is then broken into "
     "several lines. This option can be set independently of the wrap-script-literals option."},
    {"wrap-jste", "yes", Layout, Kind::YesNo,
     "This option specifies if Tidy should line wrap text contained within JSTE pseudo "
     "elements, which look like: <# ... #>."},
    {"wrap-php", "yes", Layout, Kind::YesNo,
     "This option specifies if Tidy should line wrap text contained within PHP pseudo "
     "elements, which look like: <?php ... ?>."},
    {"wrap-script-literals", "no", Layout, Kind::YesNo,
     "This option specifies if Tidy should line wrap string literals that appear in script "
     "attributes. A long string literal is broken by a backslash before the line break."},
    {"wrap-sections", "yes", Layout, Kind::YesNo,
     "This option specifies if Tidy should line wrap text contained within <![ ... ]> section "
     "tags."},
    {"indent-spaces", "2", Layout, Kind::Number,
     "This option specifies the number of spaces Tidy uses to indent content, when "
     "indentation is enabled."},
    {"tab-size", "8", Layout, Kind::Number,
     "This option specifies the number of columns that Tidy uses between successive tab "
     "stops. It is used to turn tabs into blanks when the input is read."},
    {"wrap", "68", Layout, Kind::Number,
     "This option specifies the right margin Tidy uses for line wrapping. Tidy tries to keep "
     "lines within this length. Set to 0, lines are not wrapped."},
    {"output-bom", "auto", Encoding, Kind::AutoYesNo,
     "This option specifies if Tidy should write a Unicode Byte Order Mark character (BOM; "
     "also known as Zero Width No-Break Space; has value of U+FEFF) to the beginning of the "
     "output; only for UTF-8 and UTF-16 output encodings. If set to auto, the mark is written "
     "only when the input began with one. With the UTF-16 encodings it is always written for "
     "XML and XHTML."},
    {"ascii-chars", "yes", Encoding, Kind::YesNo,
     "Can be used to modify behavior of -c (--clean yes) option. If set to yes when using -c, "
     "entities such as &mdash; and &rdquo; are replaced by the nearest ASCII characters."},
    {"char-encoding", "ascii", Encoding, Kind::Encoding,
     "This option specifies the character encoding Tidy uses for both the input and output. "
     "The editor keeps every character, so this option decides how characters are written in "
     "the output. With ascii, latin0, mac, win1252 and ibm858 all characters beyond ASCII "
     "become entities; with latin1 those beyond Latin-1 do; with the others none has to. Where "
     "nothing else was chosen, every character stays as it is."},
    {"input-encoding", "latin1", Encoding, Kind::Encoding,
     "This option specifies the character encoding Tidy uses for the input. The editor holds "
     "characters, not bytes, and hands them to Tidy as they are, so that this option does not "
     "change how they are read."},
    {"output-encoding", "ascii", Encoding, Kind::Encoding,
     "This option specifies the character encoding Tidy uses for the output. With ascii, "
     "latin0, mac, win1252 and ibm858 all characters beyond ASCII are written as entities; "
     "with latin1 those beyond Latin-1 are; with the others none has to be. Where nothing else "
     "was chosen, every character stays as it is."},
    {"newline", "CRLF", Encoding, Kind::NewLine,
     "The default is appropriate to the current platform: CRLF on Windows and OS/2, CR on the "
     "Mac and LF everywhere else (Unix and Linux). Where nothing else was chosen, the output "
     "keeps the line ends of the input."},
    {"language", "", Encoding, Kind::Text,
     "Currently not used, but this option specifies the language Tidy uses. In later versions "
     "it was meant for the language of messages; present versions of Tidy no longer know it "
     "in configuration files."},
    {"force-output", "no", Miscellaneous, Kind::FixedYesNo,
     "This option specifies if Tidy should produce output even if errors are encountered. Use "
     "it with care: an error means that Tidy could not fix the markup or was not sure how to, "
     "so the output may not be what you meant."},
    {"gnu-emacs", "no", Miscellaneous, Kind::YesNo,
     "This option specifies if Tidy should change the format for reporting errors and "
     "warnings to a format that is more easily parsed by GNU Emacs."},
    {"keep-time", "no", Miscellaneous, Kind::YesNo,
     "This option specifies if Tidy should alter the last modified time for files it writes "
     "back to. Tools that publish files by their date may depend on it. The system hands Tidy "
     "a file of its own, so that the document's time is never touched."},
    {"quiet", "no", Miscellaneous, Kind::YesNo,
     "This option specifies if Tidy should output the summary of the numbers of errors and "
     "warnings, or the welcome or informational messages. If set to yes, only errors and "
     "warnings are reported."},
    {"tidy-mark", "yes", Miscellaneous, Kind::FixedYesNo,
     "This option specifies if Tidy should add a meta element to the document head to "
     "indicate that the document has been tidied. None is added where there is one already."},
    {"write-back", "no", Miscellaneous, Kind::YesNo,
     "This option specifies if Tidy should write back the tidied markup to the same file it "
     "read from. Keep copies of important files before they are tidied, as on rare occasions "
     "the result is not what was expected. The system never lets Tidy write to the document; "
     "its output goes into the editor."},
    {"gnu-emacs-file", "", Miscellaneous, Kind::Text,
     ""},
    {"output-file", "", None, Kind::None,
     "This option specifies the output file Tidy uses for markup. "},
    {"zelph", "zelph", None, Kind::None, "zelph"},
    {"add-meta-charset", "no", Other, Kind::YesNo,
     "This option specifies if Tidy should add a meta element that names the encoding to the "
     "head of a page."},
    {"anchor-as-name", "yes", Other, Kind::YesNo,
     "This option specifies if Tidy should add a name attribute to an element that has an id "
     "and can be the target of a link. If set to no, a name attribute beside an id is "
     "removed."},
    {"coerce-endtags", "yes", Other, Kind::YesNo,
     "This option specifies if Tidy should take a start tag for an end tag where that was "
     "probably meant, as the second <b> in <b>bar<b>."},
    {"css-prefix", "c", Other, Kind::Text,
     "This option specifies how the names of the style rules begin that the clean option "
     "makes."},
    {"custom-tags", "no", Other, Kind::TagKind,
     "This option specifies if Tidy should accept elements of your own, such as <flag-icon>, "
     "and how to treat all of them: as block-level, empty, inline or preformatted ones. If "
     "set to no, they are errors. The options new-blocklevel-tags, new-empty-tags, new- "
     "inline-tags and new-pre-tags name single ones."},
    {"decorate-inferred-ul", "no", Other, Kind::YesNo,
     "This option specifies if Tidy should give lists that it adds itself a style that keeps "
     "them from being indented."},
    {"drop-empty-elements", "yes", Other, Kind::YesNo,
     "This option specifies if Tidy should discard empty elements. Unless you choose yes, "
     "they are kept: a style sheet or a script may make something of them."},
    {"escape-scripts", "yes", Other, Kind::YesNo,
     "This option specifies if Tidy should write <\\/ for </ in scripts."},
    {"fix-style-tags", "yes", Other, Kind::YesNo,
     "This option specifies if Tidy should move all style elements to the head of the page."},
    {"gdoc", "no", Other, Kind::YesNo,
     "This option specifies if Tidy should clean up pages exported from Google Docs."},
    {"indent-with-tabs", "no", Other, Kind::YesNo,
     "This option specifies if Tidy should indent with tabs instead of blanks. The indent- "
     "spaces option is the number of tabs then."},
    {"keep-tabs", "no", Other, Kind::YesNo,
     "This option specifies if Tidy should keep tabs where blanks count, as in <PRE>. If set "
     "to no, they become as many blanks as tab-size says."},
    {"merge-emphasis", "yes", Other, Kind::YesNo,
     "This option specifies if Tidy should merge nested <B> and <I> elements."},
    {"merge-spans", "auto", Other, Kind::AutoYesNo,
     "This option specifies if Tidy should merge nested <SPAN> elements when the clean "
     "option is set to yes. If set to auto, the attributes of the inner one move to the "
     "outer one; if set to yes, they are discarded except for class and style."},
    {"mute", "", Other, Kind::Text,
     "This option specifies messages that are not to be shown: their names, separated by "
     "commas."},
    {"mute-id", "no", Other, Kind::YesNo,
     "This option specifies if Tidy should show the name of each message, for the mute "
     "option."},
    {"preserve-entities", "no", Other, Kind::YesNo,
     "This option specifies if Tidy should keep entities as they are in the input."},
    {"priority-attributes", "", Other, Kind::TagList,
     "This option specifies the attributes that are written before all others of an element. "
     "Give a list of names separated by blanks or commas."},
    {"show-info", "yes", Other, Kind::YesNo,
     "This option specifies if Tidy should show messages that are only for information."},
    {"skip-nested", "yes", Other, Kind::YesNo,
     "This option specifies if Tidy should skip nested tags when it reads scripts and "
     "styles."},
    {"sort-attributes", "none", Other, Kind::Sorting,
     "This option specifies if Tidy should sort the attributes of an element by name."},
    {"strict-tags-attributes", "no", Other, Kind::YesNo,
     "This option specifies if Tidy should report elements and attributes that the version "
     "of HTML being written does not have."},
    {"warn-proprietary-attributes", "yes", Other, Kind::YesNo,
     "This option specifies if Tidy should warn of attributes that no version of HTML has."},
};
// clang-format on
static_assert(std::size(table) == furtherOptions + 23);

} // namespace

std::span<const Option> optionCatalogue() { return table; }

} // namespace tidy
