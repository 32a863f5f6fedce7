// What Tidy would damage in XML is kept from its sight.
#pragma once

#include "tidy/launcher/stand_ins.h"
#include "tidy/launcher/xml_pieces.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QByteArrayView>
#include <QHash>

#include <vector>

namespace launcher {

// What is kept aside, and what becomes of it that Tidy cannot be asked for any more.
struct Shielding
{
    bool wellFormed = false; // contents, comments, instructions, values and all references; else only what
                             // can be told without
    bool escapesSections = false; // CDATA sections become text
    bool dropsComments = false;
    bool plainTypography = false; // dashes, quotation marks and blanks of word processors become plain ones
};

// A document with stand-ins, which are names and words to Tidy: for document types, for names and
// references that Tidy does not know, and for all that it must not lay out or respell. Lines stay as many as
// they were, so that what Tidy says of a line is true of the document.
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

    QByteArray standIn(const QByteArray &original, bool content = false);
    void addPiece(PieceKind kind, QByteArrayView piece);
    void addContent(QByteArrayView content);
    void addAside(QByteArrayView opening, QByteArrayView aside, QByteArrayView closing);
    QByteArray treated(QByteArrayView content) const;
    void addDoctype(QByteArrayView doctype);
    void addTag(QByteArrayView tag);
    void addName(QByteArrayView name);
    void addValue(QByteArrayView value, char quote);
    void addText(QByteArrayView text);
    void addReference(QByteArrayView reference);

    Shielding shielding_;
    StandIns words_;
    std::vector<Original> originals_;
    QHash<QByteArray, QByteArray> standIns_; // by original
    QByteArrayList declared_; // the entities
    QByteArray shielded_;
};

} // namespace launcher
