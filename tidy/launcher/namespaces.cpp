#include "tidy/launcher/namespaces.h"

#include <algorithm>
#include <iterator>

namespace launcher {

namespace {

struct Usual
{
    const char *prefix;
    const char *name;
};

// What word processors, social networks and pages with pictures mean by these.
constexpr Usual usualNames[] = {
    {"o", "urn:schemas-microsoft-com:office:office"},
    {"w", "urn:schemas-microsoft-com:office:word"},
    {"x", "urn:schemas-microsoft-com:office:excel"},
    {"p", "urn:schemas-microsoft-com:office:powerpoint"},
    {"v", "urn:schemas-microsoft-com:vml"},
    {"st1", "urn:schemas-microsoft-com:office:smarttags"},
    {"dt", "uuid:C2F41010-65B3-11d1-A29F-00AA00C14882"},
    {"m", "http://schemas.microsoft.com/office/2004/12/omml"},
    {"og", "http://ogp.me/ns#"},
    {"fb", "http://ogp.me/ns/fb#"},
    {"svg", "http://www.w3.org/2000/svg"},
    {"xlink", "http://www.w3.org/1999/xlink"},
    {"epub", "http://www.idpf.org/2007/ops"},
    {"xsi", "http://www.w3.org/2001/XMLSchema-instance"},
};

QByteArray nameFor(const QByteArray &prefix)
{
    const auto is = [&](const Usual &usual) { return prefix == usual.prefix; };
    const auto *found = std::find_if(std::begin(usualNames), std::end(usualNames), is);
    return found == std::end(usualNames) ? "urn:undeclared:" + prefix : QByteArray(found->name);
}

bool startsName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || (uchar(c) & 0x80) != 0;
}

} // namespace

void Namespaces::open(const QByteArray &name, const QByteArrayList &attributes, bool empty)
{
    ++depth_;
    for (const QByteArray &attribute : attributes) {
        if (attribute.startsWith("xmlns:"))
            declared_.push_back({depth_, attribute.sliced(6)});
    }
    use(name);
    for (const QByteArray &attribute : attributes)
        use(attribute);
    if (empty)
        close();
}

void Namespaces::close()
{
    while (!declared_.empty() && declared_.back().depth >= depth_)
        declared_.pop_back();
    --depth_;
}

void Namespaces::use(const QByteArray &name)
{
    const qsizetype colon = name.indexOf(':');
    if (colon < 0)
        return;
    const QByteArray prefix = name.first(colon);
    const auto is = [&](const Declared &declared) { return declared.prefix == prefix; };
    const bool known = prefix == "xml" || prefix == "xmlns" || missing_.contains(prefix)
        || std::any_of(declared_.begin(), declared_.end(), is);
    if (!known)
        missing_ << prefix;
}

QByteArray Namespaces::missingDeclarations() const
{
    QByteArray declarations;
    for (const QByteArray &prefix : missing_)
        declarations += " xmlns:" + prefix + "=\"" + nameFor(prefix) + '"';
    return declarations;
}

QByteArray qualifiedName(const QByteArray &name)
{
    const qsizetype colon = name.indexOf(':');
    if (colon < 0)
        return name;
    const bool pair = colon > 0 && colon + 1 < name.size() && startsName(name[colon + 1]);
    QByteArray fixed = name;
    fixed.replace(':', '-');
    if (pair)
        fixed[colon] = ':';
    return fixed;
}

} // namespace launcher
