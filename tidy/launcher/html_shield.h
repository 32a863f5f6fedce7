// What Tidy would damage in HTML is kept from its sight.
#pragma once

#include "tidy/launcher/html_pieces.h"
#include "tidy/launcher/stand_ins.h"

#include <QByteArray>
#include <QByteArrayView>

#include <vector>

namespace launcher {

// A page with stand-ins: for scripts and style sheets, for drawings and formulas, whose names are not HTML's,
// and for a server's code in values. A page of XHTML becomes one of HTML, which is what Tidy reads. Lines
// stay as many as they were.
class HtmlShield
{
public:
    struct Kind
    {
        bool xhtml = false; // the page is well-formed
        bool writesXml = false; // what is put back is to be XML
    };

    HtmlShield(const QByteArray &page, Kind kind);

    const QByteArray &shielded() const { return shielded_; }

    // Whether Tidy left every script, style sheet, drawing and formula, and each once.
    bool isWholeIn(const QByteArray &tidied) const;

    // Tidy's page with what was kept aside. Line ends in it become lineEnd, unless that is empty.
    QByteArray restored(const QByteArray &tidied, const QByteArray &lineEnd) const;

    // Tidy's words about the page with what was kept aside.
    QByteArray told(const QByteArray &report) const;

private:
    enum class What
    {
        Script,
        Data, // a script's element, but no script
        Style,
        Foreign,
        Value
    };

    struct Original
    {
        What what;
        QByteArray text;
    };

    Piece pieceAt(qsizetype at) const;
    QByteArray standIn(What what, QByteArrayView text);
    qsizetype addPiece(const Piece &piece);
    qsizetype addStart(const Piece &piece);
    qsizetype addContent(const Piece &start, const QByteArray &name);
    void addTag(QByteArrayView tag);
    qsizetype endOfForeign(const Piece &start, const QByteArray &name) const;
    QByteArray rawText(const Original &original) const;
    QByteArray foreign(const QByteArray &text) const;

    QByteArray page_;
    Kind kind_;
    StandIns words_;
    std::vector<Original> originals_;
    QByteArray shielded_;
};

} // namespace launcher
