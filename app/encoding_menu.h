// The encodings to choose from, in the File menu and at the encoding in the status bar: to read the
// document's file again in one of them, or to save the document in one.
#pragma once

#include "platform/files/redeclare.h"

#include <QMenu>
#include <QObject>

#include <functional>

class QAbstractButton;

namespace document {
class Session;
}

namespace app {

class EncodingMenu : public QObject
{
public:
    // All of it outlives this.
    struct Around
    {
        document::Session &session;
        QMenu &reopen;
        QMenu &save;
        QAbstractButton &button; // shows the encoding; a click opens both menus there
        std::function<void()> beforeRun;
    };

    explicit EncodingMenu(const Around &around);

private:
    using Chosen = std::function<void(const files::EncodingWish &)>;

    void fill(QMenu &menu, bool toSave, const Chosen &chosen);
    void mark(QMenu &menu, bool anyMark) const; // the encoding there is now
    void popUp();

    Around around_;
    QMenu both_;
};

} // namespace app
