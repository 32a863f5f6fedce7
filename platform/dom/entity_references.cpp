#include "platform/dom/entity_references.h"

#include "platform/dom/characters.h"

#include <QHash>

#include <optional>

namespace dom {

namespace {

// What looks like a reference to an entity, with "amp;" between any number of times.
struct Look
{
    qsizetype amps = 0; // how often "amp;" stands there
    QByteArray name;
    qsizetype end = 0;
};

// The one whose "&" is at a place; without a name when there is none.
Look lookAt(QStringView text, qsizetype at, const IsEntity &isEntity)
{
    constexpr QStringView amp = u"amp;";
    Look look;
    qsizetype from = at + 1;
    for (; text.sliced(from).startsWith(amp); from += amp.size())
        ++look.amps;
    qsizetype end = from;
    while (end < text.size() && !QStringView(u"; &<\t\r\n").contains(text[end]))
        ++end;
    if (end == text.size() || text[end] != u';' || end == from)
        return look;
    const QByteArray name = text.sliced(from, end - from).toUtf8();
    if (!characterOf(name) && isEntity(name)) {
        look.name = name;
        look.end = end + 1;
    }
    return look;
}

// What a reference in an attribute amounts to.
class Expansion
{
public:
    explicit Expansion(const Entities &entities) : entities_(entities) { }

    // In bytes; nothing where an entity on the way is unknown, holds markup or itself, or grows beyond
    // bounds.
    std::optional<qsizetype> sizeOf(const QByteArray &entity, int depth = 0)
    {
        if (const auto known = sizes_.constFind(entity); known != sizes_.constEnd())
            return *known;
        const auto found = entities_.constFind(entity);
        if (found == entities_.constEnd() || found->contains('<') || depth > depthLimit)
            return std::nullopt;
        qsizetype size = found->size();
        for (qsizetype at = found->indexOf('&'); at >= 0; at = found->indexOf('&', at + 1)) {
            const QByteArray name = found->sliced(at + 1, qMax(at + 1, found->indexOf(';', at)) - at - 1);
            if (characterOf(name))
                continue;
            const std::optional<qsizetype> inner = sizeOf(name, depth + 1);
            if (!inner || (size += *inner) > sizeLimit)
                return std::nullopt;
        }
        sizes_.insert(entity, size);
        return size;
    }

private:
    static constexpr int depthLimit = 40; // entities within entities; one that holds itself gets there too
    static constexpr qsizetype sizeLimit = 1 << 20;

    const Entities &entities_;
    QHash<QByteArray, qsizetype> sizes_;
};

} // namespace

QString shownValue(const Value &value, const IsEntity &isEntity)
{
    QString text; // stretches of characters alone are looked through as a whole
    QString out;
    const auto flush = [&] {
        for (qsizetype at = 0; at < text.size(); ++at) {
            out += text[at];
            if (text[at] == u'&' && !lookAt(text, at, isEntity).name.isEmpty())
                out += QStringLiteral("amp;");
        }
        text.clear();
    };
    for (const char32_t item : value.items) {
        if (!Value::isReference(item)) {
            text += textOf(item);
            continue;
        }
        flush();
        out += u'&' + QString::fromUtf8(value.nameOf(item)) + u';';
    }
    flush();
    return out;
}

Value valueShownAs(const QString &shown, const IsEntity &isEntity)
{
    Value value;
    qsizetype done = 0;
    for (qsizetype at = shown.indexOf(u'&'); at >= 0; at = shown.indexOf(u'&', at + 1)) {
        const Look look = lookAt(shown, at, isEntity);
        if (look.name.isEmpty())
            continue;
        value.append(QStringView(shown).sliced(done, at - done));
        if (look.amps == 0) {
            value.items += value.reference(look.name);
            done = look.end;
        } else { // one "amp;" less
            value.items += U'&';
            done = at + 5;
        }
        at = look.end - 1;
    }
    value.append(QStringView(shown).sliced(done));
    return value;
}

IsEntity entitiesOfContent(const Entities &entities)
{
    return [&entities](QByteArrayView name) { return entities.contains(name.toByteArray()); };
}

IsEntity entitiesOfAttribute(const Entities &entities, QByteArrayView written)
{
    return [&entities, written](QByteArrayView name) {
        const QByteArray entity = name.toByteArray();
        return Expansion(entities).sizeOf(entity) || written.indexOf('&' + entity + ';') >= 0;
    };
}

QString shownAttribute(QByteArrayView written, const Entities &entities)
{
    if (!written.contains('&'))
        return decodeAttribute(written, entities);
    return shownValue(valueOf(written, Place::Attribute), entitiesOfAttribute(entities, written));
}

QByteArray respelledAttribute(QByteArrayView written, const QString &shown, const Entities &entities,
                              char quote)
{
    const Value value = valueShownAs(shown, entitiesOfAttribute(entities, written));
    return respelled(written, value, {.place = Place::Attribute, .quote = quote});
}

} // namespace dom
