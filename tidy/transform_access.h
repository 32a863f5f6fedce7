// What a transformation may read. A style sheet's own includes and imports may lie anywhere on this machine.
// Entities, document types and what document() asks for are read in the folders of the document and of the
// style sheet, below them, and where the system's XML catalogs lead; and what the user allowed.
#pragma once

#include "tidy/transform.h"

#include <QHash>

namespace tidy {

enum class Wanted
{
    StyleSheet, // included or imported
    Data
};

enum class Reach
{
    Readable,
    Elsewhere, // a file that may not be read
    NotThere,
    NotLocal // an address of another machine, and not in the catalogs
};

struct Located
{
    Reach reach = Reach::NotThere;
    QString path; // links followed; of Readable and Elsewhere only
};

class TransformAccess
{
public:
    explicit TransformAccess(const TransformJob &job);

    // Where an address leads, by itself or through the catalogs; publicId may be null. Remembers what is
    // refused.
    Located locate(const char *address, const char *publicId, Wanted wanted);

    // The text that was given for an address, which may be newer than its file; null for any other.
    const QByteArray *given(const QByteArray &address) const;

    const QStringList &refused() const { return refused_; }

private:
    bool isWithin(const QString &path) const;
    QString catalogued(const char *address, const char *publicId);

    QStringList folders_;
    QStringList allowed_;
    QStringList refused_;
    QHash<QByteArray, QByteArray> given_;
};

} // namespace tidy
