// Where requests of the preview lead whose URL is not that of a file: to a file by the path as it was
// written into a page's text, and to the files beside the one that a previewed copy was made of.
#pragma once

#include <QHash>
#include <QString>
#include <QUrl>
#include <optional>

namespace browser {

class PreviewDetours
{
public:
    // Pages refer to the file at path by these words. They are a path, but need not be escaped as URLs are:
    // a "#" in them may belong to a name.
    void setAlias(const QString &written, const QString &path);
    void dropAlias(const QString &written);

    // The file at copy holds what was read from original; empty for text that nobody read from a file.
    void setOriginal(const QString &copy, const QString &original);
    void dropOriginal(const QString &copy);

    // The file that a page calls so; empty when it is no alias.
    QString aliased(const QUrl &asked) const;

    // What the copy at path was made of; nothing when it is no copy.
    std::optional<QString> originalOf(const QString &path) const;

    // The existing file that stands to an original as path stands to its copy; empty when there is none.
    QString besideOriginal(const QString &path) const;

private:
    QHash<QString, QString> aliases_; // by the written words without escapes
    QHash<QString, QString> originals_; // by copy
};

} // namespace browser
