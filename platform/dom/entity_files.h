// The files that the entities and document types of one document lead to.
#pragma once

#include <QByteArray>
#include <QString>

#include <map>

namespace dom {

struct EntityFile
{
    QString path; // links followed
    QByteArray utf8; // the whole text, decoded by its own mark or declaration
    QByteArray judged; // what the parser reads in its place, byte for byte: see xml11.h
    qsizetype content = 0; // where it begins: behind the declaration
    QByteArray version; // that the declaration names; else empty
    QString fault; // why it cannot be taken in, as a sentence; else empty
    qsizetype faultOffset = 0; // where that shows
};

class EntityFiles
{
public:
    // For a document of XML 1.1, or of 1.0, by whose rules its files are judged too.
    explicit EntityFiles(bool isVersion11) : isVersion11_(isVersion11) { }

    // Each file is read once. Null where nothing may be read: only local regular files of a bounded size
    // are. It stays as long as this does.
    const EntityFile *open(const QByteArray &address);

    // The file that these bytes belong to, or null.
    const EntityFile *holding(const char *text) const;

private:
    bool isVersion11_;
    std::map<QByteArray, EntityFile> files_; // by address; without a path: not to be read
};

} // namespace dom
