// What Tidy would damage in XML is kept from its sight.
#pragma once

#include "tidy/launcher/xml_pieces.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>
#include <QHash>

#include <vector>

namespace launcher {

// How much may be kept aside.
struct Shielding
{
    bool wellFormed = false; // contents and all references, too; else only what can be told without
    bool sections = true; // with wellFormed, contents with CDATA sections
    bool values = true; // with wellFormed, attribute values with tabs
};

// A document with stand-ins, which are names and words to Tidy: for document types, for names and
// references that Tidy does not know, and for contents that it must not lay out. Lines stay as many as they
// were, so that what Tidy says of a line is true of the document.
class XmlShield
{
public:
    XmlShield(const QByteArray &xml, const Shielding &shielding);

    const QByteArray &shielded() const { return shielded_; }

    // A text of Tidy's with what was kept aside in the place of each stand-in. Line ends in it become
    // lineEnd, unless that is empty.
    QByteArray restored(const QByteArray &text, const QByteArray &lineEnd) const;

private:
    struct Original
    {
        QByteArray text;
        bool content; // of an element, whole: what blanks are around its stand-in are Tidy's
    };

    void chooseKey(const QByteArray &xml);
    QByteArray standIn(const QByteArray &original, bool content = false);
    void addPiece(PieceKind kind, QByteArrayView piece);
    void addContent(QByteArrayView content);
    void addDoctype(QByteArrayView doctype);
    void addTag(QByteArrayView tag);
    void addName(QByteArrayView name);
    void addValue(QByteArrayView value, char quote);
    void addText(QByteArrayView text);
    void addReference(QByteArrayView reference);

    Shielding shielding_;
    QByteArray key_; // begins every stand-in, and occurs nowhere else
    std::vector<Original> originals_;
    QHash<QByteArray, QByteArray> standIns_; // by original
    QByteArrayList declared_; // the entities
    QByteArray shielded_;
};

} // namespace launcher
