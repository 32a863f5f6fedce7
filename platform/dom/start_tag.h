// A start tag taken apart without losing a byte of it, and changed only where it is told to.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <vector>

namespace dom {

// The name in a start tag, without looking at the rest of it.
QByteArrayView tagName(QByteArrayView startTag);

class StartTag
{
public:
    struct AttributeSpan
    {
        qsizetype lead; // where the blanks before it begin
        qsizetype name;
        qsizetype nameEnd;
        qsizetype value; // past the opening quote
        qsizetype valueEnd; // at the closing quote
    };

    // An attribute of a tag to be: name, sign and quoted value, and which of this tag's it was, or null.
    struct Spelled
    {
        const AttributeSpan *was;
        QByteArray text;
    };

    // raw runs from "<" to ">" of a well-formed start tag and must outlive this.
    explicit StartTag(QByteArrayView raw);

    QByteArrayView name() const { return raw_.sliced(1, nameEnd_ - 1); }
    bool closesItself() const { return raw_.size() >= 2 && raw_[raw_.size() - 2] == '/'; }
    const std::vector<AttributeSpan> &attributes() const { return attributes_; }
    QByteArrayView nameOf(const AttributeSpan &attribute) const;
    QByteArrayView valueOf(const AttributeSpan &attribute) const; // as written
    QByteArrayView signOf(const AttributeSpan &attribute) const; // "=" with the blanks around it
    const AttributeSpan *find(QByteArrayView name) const;

    // The tag with one thing changed. A value is given as written, without quotes.
    QByteArray withValue(const AttributeSpan &attribute, const QByteArray &value) const;
    QByteArray withAttribute(const QByteArray &name, const QByteArray &value) const; // added after the last
    QByteArray without(const AttributeSpan &attribute) const;
    // The tag with these attributes alone, in this order. The blanks before those that stay stay too, in
    // their own order: attributes on lines of their own change lines, not the lines their looks.
    QByteArray withAttributes(const std::vector<Spelled> &attributes) const;
    QByteArray withName(const QByteArray &name) const;
    QByteArray opened() const; // "<a/>" as "<a>"

private:
    QByteArrayView leadOf(const AttributeSpan &attribute) const;
    QByteArrayView leadOfNew() const;

    QByteArrayView raw_;
    qsizetype nameEnd_ = 1;
    std::vector<AttributeSpan> attributes_;
};

} // namespace dom
