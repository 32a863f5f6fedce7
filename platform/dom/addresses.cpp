#include "platform/dom/addresses.h"

#include <QByteArrayView>
#include <QUrl>

#include <cctype>

namespace dom {

namespace {

bool isHex(char sign) { return std::isxdigit(static_cast<unsigned char>(sign)) != 0; }

bool stands(char sign)
{
    return std::isalnum(static_cast<unsigned char>(sign)) != 0
        || QByteArrayView("-._~:/?#@!$&'()*+,;=").contains(sign);
}

} // namespace

QByteArray asAddress(const QByteArray &reference)
{
    QByteArray address;
    for (qsizetype at = 0; at < reference.size(); ++at) {
        const char sign = reference[at];
        const bool escape = sign == '%' && at + 2 < reference.size() && isHex(reference[at + 1])
            && isHex(reference[at + 2]);
        if (escape || stands(sign))
            address += sign;
        else
            address += '%' + QByteArray(1, sign).toHex().toUpper();
    }
    return address;
}

QByteArray addressOfPath(const QString &path) { return QUrl::fromLocalFile(path).toEncoded(); }

} // namespace dom
