// How values are written, character by character: what an edit leaves alone keeps its spelling byte for byte
// (references, kinds of line ends, line breaks within an attribute), and only what it changes is spelled
// anew.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>
#include <QString>

#include <string>

namespace dom {

enum class Place
{
    Text, // character data of an element
    Verbatim, // a comment, a CDATA section, an instruction's data: no references, only line ends differ
    Attribute,
};

// What a value means, one item a character. A reference to a declared entity is an item of its own, which
// never equals a character.
class Value
{
public:
    Value() = default;
    explicit Value(const QString &text) : items(text.toStdU32String()) { }

    // For the entity of that name, here and in every value that shares these names.
    char32_t reference(const QByteArray &name);
    static bool isReference(char32_t item) { return item >= firstReference; }
    QByteArray nameOf(char32_t reference) const { return names_.at(qsizetype(reference - firstReference)); }
    void shareNames(const Value &other) { names_ = other.names_; }
    void append(QStringView text);
    bool hasReferences() const { return !names_.isEmpty(); }

    std::u32string items;

private:
    static constexpr char32_t firstReference = 0x110000; // behind all characters
    QList<QByteArray> names_;
};

// How a place writes what cannot stand there as it is.
struct Manner
{
    Place place;
    QByteArray lineEnd = "\n"; // what a line feed is written as; none is in an attribute
    char quote = '"'; // around an attribute's value
};

Value valueOf(QByteArrayView raw, Place place);

// raw, changed as little as it takes to mean wanted.
QByteArray respelled(QByteArrayView raw, const Value &wanted, const Manner &manner);

// A text's markup, spelled for another place: what is written as a reference stays one.
QByteArray withReferencesKept(QByteArrayView text, const Manner &manner);

// A new value.
inline QByteArray spelled(const QString &text, const Manner &manner)
{
    return respelled({}, Value(text), manner);
}

} // namespace dom
