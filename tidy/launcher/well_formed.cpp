#include "tidy/launcher/well_formed.h"

#include "tidy/launcher/namespaces.h"
#include "tidy/launcher/xml_pieces.h"

#include <QByteArrayView>

#include <algorithm>

namespace launcher {

namespace {

constexpr QByteArrayView replacement = "\xEF\xBF\xBD";

bool isForbidden(char c) { return uchar(c) < 0x20 && c != '\t' && c != '\n' && c != '\r'; }

// Bytes below 0x20 are characters of their own in UTF-8; a form feed separates words.
QByteArray withoutForbidden(const QByteArray &text)
{
    QByteArray allowed;
    if (std::any_of(text.begin(), text.end(), isForbidden)) {
        allowed.reserve(text.size());
        for (const char c : text) {
            if (!isForbidden(c))
                allowed += c;
            else if (c == '\f')
                allowed += ' ';
            else
                allowed += replacement;
        }
    } else {
        allowed = text;
    }
    for (const char *noCharacter : {"\xEF\xBF\xBE", "\xEF\xBF\xBF"})
        allowed.replace(QByteArrayView(noCharacter), replacement);
    return allowed;
}

// Walks through the output once and writes what it makes of it.
class Repair
{
public:
    explicit Repair(const QByteArray &text) : text_(text) { out_.reserve(text.size() + text.size() / 64); }

    QByteArray done()
    {
        while (at_ < text_.size()) {
            const qsizetype markup = text_.indexOf('<', at_);
            copyTo(markup < 0 ? text_.size() : markup);
            if (at_ < text_.size())
                takeMarkup();
        }
        if (rootNameEnd_ > 0)
            out_.insert(rootNameEnd_, namespaces_.missingDeclarations());
        return out_;
    }

private:
    bool sees(QByteArrayView begin) const { return QByteArrayView(text_).sliced(at_).startsWith(begin); }

    char byteAt(qsizetype at) const { return at < text_.size() ? text_[at] : '\0'; }

    void copyTo(qsizetype end)
    {
        out_.append(text_.constData() + at_, end - at_);
        at_ = end;
    }

    // The place behind the next closing mark; the end of the text without one.
    qsizetype behind(QByteArrayView closing, qsizetype from) const
    {
        const qsizetype found = text_.indexOf(closing, from);
        return found < 0 ? text_.size() : found + closing.size();
    }

    void takeMarkup()
    {
        const char next = byteAt(at_ + 1);
        if (next == '!')
            takeDeclaration();
        else if (next == '?')
            takeInstruction();
        else if (next == '%')
            takeAsComment(behind("%>", at_));
        else if (next == '#')
            takeAsComment(behind("#>", at_));
        else if (next == '/')
            takeEndTag();
        else if (isNameByte(next))
            takeStartTag();
        else
            escapeBracket();
    }

    void escapeBracket()
    {
        out_ += "&lt;";
        ++at_;
    }

    void takeDeclaration()
    {
        if (sees("<!--"))
            takeComment();
        else if (sees("<![CDATA["))
            copyTo(behind("]]>", at_));
        else if (text_.sliced(at_, std::min<qsizetype>(9, text_.size() - at_)).toUpper() == "<!DOCTYPE")
            takeDoctype();
        else
            takeAsComment(behind(">", at_));
    }

    void takeComment()
    {
        constexpr qsizetype mark = 4;
        const qsizetype end = behind("-->", at_ + mark);
        const bool closed = end - at_ >= mark + 3 && QByteArrayView(text_).first(end).endsWith("-->");
        writeComment(text_.sliced(at_ + mark, end - at_ - mark - (closed ? 3 : 0)));
        at_ = end;
    }

    // The brackets are left out, so that "<![if x]>" reads "[if x]".
    void takeAsComment(qsizetype end)
    {
        QByteArray inside = text_.sliced(at_ + 1, end - at_ - 1);
        if (inside.endsWith('>'))
            inside.chop(1);
        if (inside.startsWith('!'))
            inside.remove(0, 1);
        writeComment(inside);
        at_ = end;
    }

    void writeComment(const QByteArray &content) { out_ += comment(content); }

    static QByteArray comment(QByteArray content)
    {
        while (content.contains("--"))
            content.replace("--", "==");
        if (content.endsWith('-'))
            content.back() = '=';
        return "<!--" + content + "-->";
    }

    // Its target is a name without a colon; "xml" is the declaration's, at the very start.
    void takeInstruction()
    {
        qsizetype nameEnd = at_ + 2;
        while (isNameByte(byteAt(nameEnd)))
            ++nameEnd;
        const QByteArray target = text_.sliced(at_ + 2, nameEnd - at_ - 2);
        const qsizetype end = behind("?>", at_);
        const bool closed = QByteArrayView(text_).first(end).endsWith("?>");
        const bool declaration = target.compare("xml", Qt::CaseInsensitive) == 0;
        if (!closed || target.isEmpty() || target.contains(':') || (declaration && at_ > 0))
            takeAsComment(end);
        else
            copyTo(end);
    }

    // XML wants a system identifier behind a public one, and capitals.
    void takeDoctype()
    {
        const qsizetype end = endOfDoctype(text_, at_);
        QByteArray doctype = "<!DOCTYPE" + text_.sliced(at_ + 9, end - at_ - 9);
        const bool onePart = doctype.count('"') + doctype.count('\'') == 2;
        if (onePart && doctype.contains("PUBLIC") && doctype.endsWith('>'))
            doctype.insert(doctype.size() - 1, " \"\"");
        out_ += doctype;
        at_ = end;
    }

    void takeEndTag()
    {
        const qsizetype end = behind(">", at_);
        const qsizetype nameSize = std::max<qsizetype>(end - at_ - 3, 0);
        out_ += "</" + qualifiedName(text_.sliced(at_ + 2, nameSize).trimmed()) + '>';
        at_ = end;
        namespaces_.close();
    }

    void takeStartTag()
    {
        const bool root = rootNameEnd_ == 0;
        const qsizetype begin = out_.size();
        ++at_;
        const QByteArray name = takeName();
        out_ += '<' + name;
        QByteArrayList attributes;
        QByteArray code;
        while (at_ < text_.size() && text_[at_] != '>')
            takeTagPart(attributes, code);
        out_.insert(begin, code);
        if (root)
            rootNameEnd_ = begin + code.size() + 1 + name.size();
        const bool empty = out_.endsWith('/');
        copyTo(std::min(at_ + 1, text_.size()));
        namespaces_.open(name, attributes, empty);
    }

    // Server-side code between the attributes stands as comments before the tag.
    void takeTagPart(QByteArrayList &attributes, QByteArray &code)
    {
        const char c = text_[at_];
        if (c == '<') {
            code += takeCode();
        } else if (c == '"' || c == '\'') {
            takeValue(c);
        } else if (isNameByte(c)) {
            attributes << takeName();
            out_ += attributes.back();
        } else {
            copyTo(at_ + 1);
        }
    }

    QByteArray takeCode()
    {
        const char opening = byteAt(at_ + 1);
        if (opening != '?' && opening != '%' && opening != '#') {
            ++at_;
            return {};
        }
        const qsizetype begin = at_ + 1;
        at_ = behind(QByteArray(1, opening) + '>', begin);
        return comment(text_.sliced(begin, std::max<qsizetype>(at_ - begin - 1, 0)));
    }

    void takeValue(char quote)
    {
        const qsizetype found = text_.indexOf(quote, at_ + 1);
        const qsizetype end = found < 0 ? text_.size() : found + 1;
        out_ += text_.sliced(at_, end - at_).replace('<', "&lt;");
        at_ = end;
    }

    QByteArray takeName()
    {
        const qsizetype begin = at_;
        while (isNameByte(byteAt(at_)))
            ++at_;
        return qualifiedName(text_.sliced(begin, at_ - begin));
    }

    static bool isNameByte(char c)
    {
        return c != '\0' && !isXmlBlank(c) && !QByteArrayView("<>/=\"'?!%#&").contains(c);
    }

    const QByteArray text_;
    QByteArray out_;
    qsizetype at_ = 0;
    qsizetype rootNameEnd_ = 0; // in out_
    Namespaces namespaces_;
};

} // namespace

QByteArray wellFormed(const QByteArray &tidied) { return Repair(withoutForbidden(tidied)).done(); }

} // namespace launcher
