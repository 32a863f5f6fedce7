#include "platform/control/known_names.h"

#include "platform/control/code_editor.h"
#include "platform/control/tag_attributes.h"
#include "platform/control/text_window.h"

#include <QElapsedTimer>
#include <algorithm>
#include <initializer_list>

namespace control {

namespace {

constexpr long nearReach = 32L * 1024;
constexpr long chunk = 64L * 1024;
constexpr qint64 budget = 3; // milliseconds
constexpr qsizetype longestValue = 48;
constexpr qsizetype mostValues = 200;

NameCounts sum(std::initializer_list<const NameCounts *> parts)
{
    NameCounts all;
    for (const NameCounts *part : parts)
        for (auto at = part->begin(); at != part->end(); ++at)
            all[at.key()] = std::max(all.value(at.key()), at.value());
    return all;
}

QList<QByteArray> byFrequency(const NameCounts &counts)
{
    QList<QByteArray> names = counts.keys();
    std::sort(names.begin(), names.end(), [&counts](const QByteArray &a, const QByteArray &b) {
        const int one = counts.value(a);
        const int other = counts.value(b);
        return one != other ? one > other : a < b;
    });
    return names;
}

void addNew(QList<QByteArray> &names, const QList<QByteArray> &more)
{
    for (const QByteArray &name : more)
        if (!names.contains(name))
            names += name;
}

// The name that a declaration such as "<!ENTITY" gives at a position behind the keyword.
QByteArray declaredName(QByteArrayView bytes, qsizetype at)
{
    while (at < bytes.size() && isBlankByte(bytes[at]))
        ++at;
    const qsizetype start = at;
    while (at < bytes.size() && isNameByte(bytes[at]))
        ++at;
    return bytes.sliced(start, at - start).toByteArray();
}

} // namespace

void NameTally::count(QByteArrayView bytes, const Markup &markup)
{
    const QByteArrayView whole = bytes.sliced(markup.whole.start, markup.whole.length);
    if (markup.kind == MarkupKind::StartTag || markup.kind == MarkupKind::EmptyTag)
        countTag(whole, {markup.kind, {}, {markup.name.start - markup.whole.start, markup.name.length}});
    else if (markup.kind == MarkupKind::Other && whole.startsWith("<!DOCTYPE"))
        countDeclarations(whole);
}

void NameTally::countTag(QByteArrayView bytes, const Markup &tag)
{
    if (!bytes.endsWith('>'))
        return;
    const QByteArray element = bytes.sliced(tag.name.start, tag.name.length).toByteArray();
    ++elements[element];
    const QByteArrayView rest = bytes.sliced(tag.name.end());
    if (rest.size() < 4)
        return;
    TagAttributes walk(rest);
    NameCounts &own = attributesOf[element];
    while (const std::optional<TagAttribute> attribute = walk.next()) {
        const QByteArray name = rest.sliced(attribute->name.start, attribute->name.length).toByteArray();
        ++own[name];
        ++attributes[name];
        const QByteArrayView value = rest.sliced(attribute->value.start, attribute->value.length);
        NameCounts &values = valuesOf[name];
        if (attribute->closed && value.size() > 1 && value.size() <= longestValue
            && values.size() < mostValues
            && std::none_of(value.begin(), value.end(), [](char c) { return uchar(c) < ' ' || c == '&'; }))
            ++values[value.toByteArray()];
    }
}

void NameTally::countDeclarations(QByteArrayView declaration)
{
    for (qsizetype at = declaration.indexOf("<!E"); at >= 0; at = declaration.indexOf("<!E", at + 3)) {
        const QByteArrayView here = declaration.sliced(at);
        const bool entity = here.startsWith("<!ENTITY");
        if (!entity && !here.startsWith("<!ELEMENT"))
            continue;
        // The percent sign before the name of a parameter entity is no name that text can refer to.
        const QByteArray name = declaredName(here, entity ? 8 : 9);
        if (name.isEmpty() || name.startsWith('%'))
            continue;
        ++(entity ? entities : elements)[name];
    }
}

void KnownNames::forget() { *this = {}; }

void KnownNames::look(const CodeEditor &editor, long caret)
{
    near_.clear();
    const TextWindow window = windowAround(editor, caret, nearReach);
    MarkupScanner scanner(window.bytes, editor.language() == Language::Html);
    while (const std::optional<Markup> met = scanner.next())
        if (!met->whole.touches(caret - window.start) || met->whole.end() == caret - window.start)
            near_.count(window.bytes, *met);
    if (complete_ && revision_ == editor.revision())
        return;
    if (readTo_ == 0)
        revision_ = editor.revision();
    QElapsedTimer timer;
    timer.start();
    bool more = true;
    while (more && timer.elapsed() < budget)
        more = readOn(editor, caret);
    if (more)
        return;
    whole_ = std::exchange(reading_, {});
    readTo_ = 0;
    complete_ = true;
}

// Reads the next chunk; false when the end is reached. A piece of markup that the chunk cuts off is left to
// the next one.
bool KnownNames::readOn(const CodeEditor &editor, long caret)
{
    const long length = editor.send(QsciScintillaBase::SCI_GETLENGTH);
    const TextWindow window = textWindow(editor, readTo_, readTo_ + chunk);
    const long end = window.start + long(window.bytes.size());
    MarkupScanner scanner(window.bytes, editor.language() == Language::Html);
    long next = end;
    while (const std::optional<Markup> met = scanner.next()) {
        const long start = window.start + long(met->whole.start);
        if (met->whole.end() == window.bytes.size() && end < length && start > readTo_) {
            next = start;
            break;
        }
        if (caret <= start || caret >= window.start + met->whole.end())
            reading_.count(window.bytes, *met);
    }
    readTo_ = next;
    return end < length;
}

QList<QByteArray> KnownNames::elements() const
{
    return byFrequency(sum({&whole_.elements, &reading_.elements, &near_.elements}));
}

QList<QByteArray> KnownNames::attributes(const QByteArray &element) const
{
    const NameCounts ofWhole = whole_.attributesOf.value(element);
    const NameCounts ofReading = reading_.attributesOf.value(element);
    const NameCounts ofNear = near_.attributesOf.value(element);
    QList<QByteArray> names = byFrequency(sum({&ofWhole, &ofReading, &ofNear}));
    addNew(names, byFrequency(sum({&whole_.attributes, &reading_.attributes, &near_.attributes})));
    return names;
}

QList<QByteArray> KnownNames::values(const QByteArray &attribute) const
{
    const NameCounts ofWhole = whole_.valuesOf.value(attribute);
    const NameCounts ofReading = reading_.valuesOf.value(attribute);
    const NameCounts ofNear = near_.valuesOf.value(attribute);
    return byFrequency(sum({&ofWhole, &ofReading, &ofNear}));
}

QList<QByteArray> KnownNames::entities() const
{
    QList<QByteArray> names{"lt", "gt", "amp", "quot", "apos"};
    addNew(names, byFrequency(sum({&whole_.entities, &reading_.entities, &near_.entities})));
    return names;
}

} // namespace control
