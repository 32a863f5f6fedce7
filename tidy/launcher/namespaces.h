// Which prefixes a document uses without declaring them.
#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <vector>

namespace launcher {

// Told of every tag in order, it knows the scope of each declaration.
class Namespaces
{
public:
    // A start tag with the names of its attributes.
    void open(const QByteArray &name, const QByteArrayList &attributes, bool empty);
    void close();

    // The attributes that declare what was found undeclared, each led by a blank; empty when nothing was.
    QByteArray missingDeclarations() const;

private:
    struct Declared
    {
        int depth;
        QByteArray prefix;
    };

    void use(const QByteArray &name);

    int depth_ = 0;
    std::vector<Declared> declared_;
    QByteArrayList missing_;
};

// A name as XML with namespaces allows it: one colon at most, with a name on either side. Further or other
// colons become hyphens.
QByteArray qualifiedName(const QByteArray &name);

} // namespace launcher
