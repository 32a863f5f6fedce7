#include "platform/dom/entity_files.h"

#include "platform/dom/local_entities.h"
#include "platform/dom/xml11.h"
#include "platform/dom/xml_declaration.h"
#include "platform/files/declaration.h"
#include "platform/files/text_encoding.h"

namespace dom {

namespace {

// What is wrong with the bytes, as a sentence. Without a declaration or a mark an entity is UTF-8.
QString faultOf(const files::TextEncoding &read, const files::Declaration &declaration)
{
    const files::EncodingEntry *entry = files::findEncoding(read.name);
    if (read.byteOrderMark || (entry && files::isWide(entry->codec)))
        return {};
    const bool declares = declaration.by == files::DeclaredBy::Xml && !declaration.name.isEmpty();
    const QByteArray name = declares ? declaration.name : QByteArray("UTF-8");
    const files::EncodingEntry *declared = files::findEncoding(name);
    if (!declared)
        return QStringLiteral("The encoding \"%1\" is not known.").arg(QString::fromLatin1(name.left(40)));
    if (read.name == declared->name)
        return {};
    return QStringLiteral("The bytes of the file are not in the encoding %1.")
        .arg(QString::fromLatin1(declared->name));
}

// XML 1.0 takes in nothing of a later version; nor does the parser look beyond a NUL.
QString faultOf(const EntityFile &file, bool isVersion11)
{
    if (!isVersion11 && !file.version.isEmpty() && file.version != "1.0") {
        return QStringLiteral("A document of XML 1.0 cannot take in a file of XML %1.")
            .arg(QString::fromLatin1(file.version));
    }
    if (file.utf8.contains('\0') || (isVersion11 && findRestrictedCharacter(file.utf8)))
        return QStringLiteral("The file contains control characters that XML does not allow.");
    return {};
}

EntityFile fileOf(const QString &path, const QByteArray &bytes, bool isVersion11)
{
    const files::Declaration declaration = files::declarationIn(bytes);
    files::DecodedText decoded = files::decodeText(bytes);
    EntityFile file;
    file.path = path;
    file.fault = faultOf(decoded.encoding, declaration);
    file.utf8 = std::move(decoded.utf8);
    const auto own = entityDeclaration(file.utf8);
    // A second declaration, or one that is not right, is left to the parser to refuse.
    if (own && !beginsWithDeclaration(QByteArrayView(file.utf8).sliced(own->end))) {
        file.content = own->end;
        file.version = own->version.toByteArray();
    }
    if (file.fault.isEmpty())
        file.fault = faultOf(file, isVersion11);
    file.judged = isVersion11 ? asVersion10(file.utf8, LineEnds::AsBlanks) : file.utf8;
    file.judged.detach(); // the parser spoils what it found faulty
    return file;
}

} // namespace

const EntityFile *EntityFiles::open(const QByteArray &address)
{
    const auto known = files_.find(address);
    if (known != files_.end())
        return known->second.path.isEmpty() ? nullptr : &known->second;
    EntityFile &file = files_[address];
    const QString path = localEntityPath(address.constData());
    if (const auto bytes = readLocalEntity(path))
        file = fileOf(path, *bytes, isVersion11_);
    return file.path.isEmpty() ? nullptr : &file;
}

const EntityFile *EntityFiles::holding(const char *text) const
{
    for (const auto &[address, file] : files_) {
        if (text >= file.judged.cbegin() && text <= file.judged.cend() && !file.path.isEmpty())
            return &file;
    }
    return nullptr;
}

} // namespace dom
