// The declaration that a document or an external entity may begin with.
#pragma once

#include <QByteArrayView>
#include <optional>

namespace dom {

struct XmlDeclaration
{
    QByteArrayView version; // empty where it names none, as that of an entity may
    QByteArrayView encoding; // empty where it names none
    qsizetype end = 0; // behind "?>"
};

// As a document begins: a version, then perhaps an encoding, then perhaps standalone. Nothing where the text
// does not begin with a declaration, or with one that is not right.
std::optional<XmlDeclaration> documentDeclaration(QByteArrayView utf8);

// As an external entity begins: perhaps a version, then an encoding.
std::optional<XmlDeclaration> entityDeclaration(QByteArrayView utf8);

// The text begins with what can only be meant as a declaration, right or not.
bool beginsWithDeclaration(QByteArrayView utf8);

} // namespace dom
