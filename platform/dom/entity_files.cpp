#include "platform/dom/entity_files.h"

#include "platform/dom/local_entities.h"
#include "platform/dom/xml11.h"
#include "platform/dom/xml_declaration.h"
#include "platform/files/encoding_fault.h"
#include "platform/files/text_encoding.h"

namespace dom {

namespace {

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
    files::DecodedText decoded = files::decodeText(bytes);
    EntityFile file;
    file.path = path;
    if (const auto fault = files::encodingFault(decoded.utf8, decoded.encoding)) {
        file.fault = fault->reason;
        file.faultOffset = fault->offset;
    }
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
