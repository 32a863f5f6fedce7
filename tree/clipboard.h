// The clipboard, as the commands on nodes see it: what they put there, and what they find.
#pragma once

#include "platform/result.h"

#include <QByteArray>
#include <QString>

namespace tree {

// A copied node, for whoever asks for it.
struct CopiedNode
{
    QByteArray markup; // as it stood in its document
    QByteArray declarations; // of the namespaces that it uses and does not declare, as in a start tag
    bool isElement = false;

    QByteArray asText() const; // markup that declares what it uses, if it can
    QByteArray asElement() const; // the markup within an element that declares what it uses
};

struct Clip
{
    enum class Form
    {
        Text, // of some other program
        Source, // of a document: markup as it was written, or a part of it
        Node // CopiedNode::asElement()
    };

    Form form = Form::Text;
    QString text;
};

class Clipboard
{
public:
    virtual ~Clipboard() = default;

    virtual void put(const CopiedNode &node) = 0;
    virtual bool holdsWhatWasPut() const = 0; // nobody has put anything else there since
    virtual bool holdsText() const = 0; // in whatever form
    // Fails when there is none, or so much that nobody means it.
    virtual platform::Result<Clip> read() const = 0;
};

} // namespace tree
