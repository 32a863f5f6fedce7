#include "platform/dom/twin_attributes.h"

#include "platform/dom/characters.h"
#include "platform/dom/markup_reader.h"
#include "platform/dom/start_tag.h"

#include <algorithm>
#include <vector>

namespace dom {

namespace {

struct Binding
{
    int depth; // of the element that declares it
    QByteArrayView prefix;
    QString uri;
};

class TwinFinder
{
public:
    explicit TwinFinder(const std::function<QString(QByteArrayView)> &outer) : outer_(outer) { }

    QString run(QByteArrayView markup)
    {
        MarkupReader reader(markup);
        while (const std::optional<MarkupReader::Tag> tag = reader.nextTag()) {
            if (tag->kind == MarkupReader::Tag::End) {
                leave();
                continue;
            }
            ++depth_;
            if (tag->text.contains(':')) {
                if (QString twins = enter(StartTag(tag->text)); !twins.isEmpty())
                    return twins;
            }
            if (tag->kind == MarkupReader::Tag::Empty)
                leave();
        }
        return {};
    }

private:
    static QByteArrayView localPart(QByteArrayView name) { return name.sliced(name.indexOf(':')); }
    static QByteArrayView prefix(QByteArrayView name) { return name.first(name.indexOf(':')); }

    void leave()
    {
        while (!bindings_.empty() && bindings_.back().depth == depth_)
            bindings_.pop_back();
        --depth_;
    }

    QString enter(const StartTag &tag)
    {
        std::vector<QByteArrayView> prefixed;
        for (const StartTag::AttributeSpan &attribute : tag.attributes()) {
            const QByteArrayView name = tag.nameOf(attribute);
            if (name.startsWith("xmlns:"))
                bindings_.push_back({depth_, name.sliced(6), decodeAttribute(tag.valueOf(attribute), {})});
            else if (name.contains(':'))
                prefixed.push_back(name);
        }
        // Only those of one local name can be the same; of all attributes there may be thousands.
        std::stable_sort(prefixed.begin(), prefixed.end(),
                         [](auto one, auto other) { return localPart(one) < localPart(other); });
        for (size_t i = 0; i < prefixed.size(); ++i) {
            for (size_t j = i + 1; j < prefixed.size() && localPart(prefixed[j]) == localPart(prefixed[i]);
                 ++j) {
                if (areTwins(prefixed[i], prefixed[j]))
                    return QStringLiteral("%1 and %2")
                        .arg(QString::fromUtf8(prefixed[i]), QString::fromUtf8(prefixed[j]));
            }
        }
        return {};
    }

    bool areTwins(QByteArrayView one, QByteArrayView other) const
    {
        const QString uri = resolve(prefix(one));
        return !uri.isEmpty() && uri == resolve(prefix(other));
    }

    QString resolve(QByteArrayView prefix) const
    {
        for (auto binding = bindings_.rbegin(); binding != bindings_.rend(); ++binding) {
            if (binding->prefix == prefix)
                return binding->uri;
        }
        return outer_(prefix);
    }

    const std::function<QString(QByteArrayView)> &outer_;
    std::vector<Binding> bindings_;
    int depth_ = 0;
};

} // namespace

QString findTwinAttributes(QByteArrayView markup, const std::function<QString(QByteArrayView prefix)> &outer)
{
    return TwinFinder(outer).run(markup);
}

} // namespace dom
