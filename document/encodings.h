// The encoding of the document's file as the user has it: read again in another one, saved in another one,
// and the question before a save that others could not read.
#pragma once

#include "document/life.h"
#include "platform/files/redeclare.h"

namespace document {

class Encodings
{
public:
    Encodings(DocumentState &state, const Surroundings &around, Parsing &parsing, Saving &saving, Life &life)
        : state_(state), around_(around), parsing_(parsing), saving_(saving), life_(life)
    { }

    // Whether there is a file to be read again.
    bool canReopen() const;

    // Reads the document's file again, in this encoding, after a question where changes would be lost. False
    // when nothing was read.
    bool reopen(const QByteArray &encoding);

    // Saves the document in this encoding, named in its declaration where one is needed. What cannot be
    // written in it is reported, and nothing changes.
    SaveResult saveWith(const files::EncodingWish &wish);

private:
    platform::Result<files::Redeclared> prepared(const QByteArray &text,
                                                 const files::EncodingWish &wish) const;
    void putIn(const QByteArray &text);

    DocumentState &state_;
    Surroundings around_;
    Parsing &parsing_;
    Saving &saving_;
    Life &life_;
};

// Before an edited text is written: when other programs could not read it because it is not in the encoding
// that it should be in, asks whether it is to be saved in that one. False when the user cancelled the save.
bool settleEncoding(DocumentState &state, const Surroundings &around, const QByteArray &text);

} // namespace document
