// The file through which the assigned file's text reaches the browser.
#pragma once

#include "platform/files/text_encoding.h"
#include "platform/result.h"

#include <QString>

namespace editor {

// Named by a prefix and the smallest number that is free. Nobody else may read it, and it is deleted with
// the object.
class PreviewFile
{
public:
    // Makes the file, empty. A name that is taken, be it by a link that leads nowhere, is passed over.
    explicit PreviewFile(const QString &prefix);
    ~PreviewFile();
    PreviewFile(const PreviewFile &) = delete;
    PreviewFile &operator=(const PreviewFile &) = delete;

    // Also where the file could not be made.
    const QString &path() const { return path_; }

    // Replaces the content by text, encoded as it declares or else as it came, and a line end. What its
    // encoding lacks makes the whole UTF-8. On failure the content stays.
    platform::Result<void> write(const QByteArray &text, const files::TextEncoding &cameWith);

    void remove();

private:
    bool make();

    QString path_;
    bool made_ = false;
};

} // namespace editor
