#include "platform/dom/xml_declaration.h"

#include "platform/dom/names.h"

#include <algorithm>

namespace dom {

namespace {

constexpr QByteArrayView opening = "<?xml";

bool isLetter(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }
bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool isVersion(QByteArrayView value)
{
    return value.size() > 2 && value.startsWith("1.") && std::all_of(value.begin() + 2, value.end(), isDigit);
}

bool isEncodingName(QByteArrayView value)
{
    return !value.isEmpty() && isLetter(value.front()) && std::all_of(value.begin(), value.end(), [](char c) {
        return isLetter(c) || isDigit(c) || c == '.' || c == '_' || c == '-';
    });
}

bool isYesOrNo(QByteArrayView value) { return value == "yes" || value == "no"; }

class Reader
{
public:
    explicit Reader(QByteArrayView text) : text_(text), at_(opening.size()) { }

    // Takes blanks, the name, the sign and a value of the right kind; an empty view, and nothing taken, where
    // anything else stands.
    QByteArrayView take(QByteArrayView name, bool (*isRight)(QByteArrayView))
    {
        qsizetype at = skipBlanks(text_, at_);
        if (at == at_ || !text_.sliced(at).startsWith(name))
            return {};
        at = skipBlanks(text_, at + name.size());
        if (at >= text_.size() || text_[at] != '=')
            return {};
        at = skipBlanks(text_, at + 1);
        if (at >= text_.size() || (text_[at] != '"' && text_[at] != '\''))
            return {};
        const qsizetype end = text_.indexOf(text_[at], at + 1);
        const QByteArrayView value = end < 0 ? QByteArrayView() : text_.sliced(at + 1, end - at - 1);
        if (!isRight(value))
            return {};
        at_ = end + 1;
        return value;
    }

    // Behind the closing "?>", or nothing where that does not come next.
    std::optional<qsizetype> close() const
    {
        const qsizetype at = skipBlanks(text_, at_);
        return text_.sliced(at).startsWith("?>") ? std::optional(at + 2) : std::nullopt;
    }

private:
    QByteArrayView text_;
    qsizetype at_;
};

} // namespace

bool beginsWithDeclaration(QByteArrayView utf8)
{
    return utf8.size() > opening.size() && utf8.startsWith(opening) && isBlank(utf8[opening.size()]);
}

std::optional<XmlDeclaration> documentDeclaration(QByteArrayView utf8)
{
    if (!beginsWithDeclaration(utf8))
        return std::nullopt;
    Reader reader(utf8);
    XmlDeclaration declaration;
    declaration.version = reader.take("version", isVersion);
    declaration.encoding = reader.take("encoding", isEncodingName);
    reader.take("standalone", isYesOrNo);
    const std::optional<qsizetype> end = reader.close();
    if (!end || declaration.version.isEmpty())
        return std::nullopt;
    declaration.end = *end;
    return declaration;
}

std::optional<XmlDeclaration> entityDeclaration(QByteArrayView utf8)
{
    if (!beginsWithDeclaration(utf8))
        return std::nullopt;
    Reader reader(utf8);
    XmlDeclaration declaration;
    declaration.version = reader.take("version", isVersion);
    declaration.encoding = reader.take("encoding", isEncodingName);
    const std::optional<qsizetype> end = reader.close();
    if (!end || declaration.encoding.isEmpty())
        return std::nullopt;
    declaration.end = *end;
    return declaration;
}

} // namespace dom
