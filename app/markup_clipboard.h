// The system clipboard, as far as it is about nodes and markup.
#pragma once

#include "tree/clipboard.h"

#include <QObject>
#include <QPointer>

class QMimeData;

namespace app {

// The form in which an editor marks what it copies as the source of a document: a part of its markup, unlike
// a text that happens to look like some.
QString sourceFormat();

class MarkupClipboard : public QObject, public tree::Clipboard
{
public:
    MarkupClipboard();

    void put(const tree::CopiedNode &node) override; // becomes text only when somebody asks for it
    bool holdsWhatWasPut() const override;
    bool holdsText() const override { return holdsText_; }
    platform::Result<tree::Clip> read() const override;

private:
    void look();

    QPointer<QMimeData> put_;
    bool holdsText_ = false; // as of the last change: asking may mean asking another program
};

} // namespace app
