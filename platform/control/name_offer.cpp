#include "platform/control/name_offer.h"

#include "platform/control/caret_place.h"
#include "platform/control/code_editor.h"
#include "platform/control/tag_attributes.h"
#include "platform/control/text_window.h"

#include <QGuiApplication>
#include <QListWidget>
#include <algorithm>

namespace control {

namespace {

using S = QsciScintillaBase;

constexpr long longestName = 256;
constexpr long longestTag = 8L * 1024;
constexpr long mostShown = 10;
constexpr qsizetype mostListed = 200;

char byteAt(const CodeEditor &editor, long position)
{
    return char(editor.send(S::SCI_GETCHARAT, ulong(position)));
}

// Where the name that ends at the caret begins; the caret when there is none.
long nameStart(const CodeEditor &editor, long caret)
{
    long start = caret;
    while (start > 0 && caret - start < longestName && isNameByte(byteAt(editor, start - 1)))
        --start;
    return start;
}

// Spares the long look when what is being typed is plain text.
bool mayBeMarkup(const CodeEditor &editor, long caret)
{
    const TextWindow before = textWindow(editor, caret - longestTag, caret);
    const qsizetype open = before.bytes.lastIndexOf('<');
    const long start = nameStart(editor, caret);
    if (start > 0 && byteAt(editor, start - 1) == '&')
        return true;
    if (open < 0)
        return false;
    const QByteArrayView tag = before.bytes.sliced(open);
    return !tag.startsWith("<!") && !tag.startsWith("<?") && tag.indexOf('>') < 0;
}

struct Sight
{
    CaretPlace place;
    TextWindow window;
    QByteArray tag;
    QByteArray open;
    QByteArray attribute;
};

Sight look(const CodeEditor &editor, long caret)
{
    Sight sight;
    sight.window = textWindow(editor, caret - long(matchReach), caret);
    const QByteArrayView bytes = sight.window.bytes;
    sight.place = caretPlace({bytes, sight.window.start == 0, editor.language() == Language::Html});
    const auto named
        = [bytes](const Span &name) { return bytes.sliced(name.start, name.length).toByteArray(); };
    sight.tag = named(sight.place.tag.name);
    sight.attribute = named(sight.place.attribute);
    if (!sight.place.open.empty())
        sight.open = named(sight.place.open.back().name);
    return sight;
}

// The attributes that the tag around the caret has already, other than the one being written.
QList<QByteArray> attributesGiven(const CodeEditor &editor, const Sight &sight)
{
    const long word = sight.window.start + long(sight.place.word);
    const long start = sight.window.start + long(sight.place.tag.whole.start);
    const TextWindow window = textWindow(editor, start, start + longestTag);
    const std::optional<Markup> tag = MarkupScanner(window.bytes, editor.language() == Language::Html).next();
    QList<QByteArray> given;
    if (!tag)
        return given;
    const qsizetype behindName = tag->name.end();
    const QByteArrayView bytes = window.bytes.sliced(behindName, tag->whole.end() - behindName);
    TagAttributes attributes(bytes);
    while (const std::optional<TagAttribute> one = attributes.next())
        if (start + behindName + one->name.start != word)
            given += bytes.sliced(one->name.start, one->name.length).toByteArray();
    return given;
}

void remove(QList<QByteArray> &words, const QList<QByteArray> &unwanted)
{
    words.removeIf([&unwanted](const QByteArray &word) { return unwanted.contains(word); });
}

// The word under way as the text has it up to the caret.
QByteArray written(const CodeEditor &editor, long start)
{
    return editor.bytes({start, editor.send(S::SCI_GETCURRENTPOS)});
}

// The engine places its list by the screen that the caret is on, and fails where there is none.
bool caretIsOnScreen(const CodeEditor &editor)
{
    const long caret = editor.send(S::SCI_GETCURRENTPOS);
    const QPoint place(int(editor.send(S::SCI_POINTXFROMPOSITION, 0, caret)),
                       int(editor.send(S::SCI_POINTYFROMPOSITION, 0, caret)));
    return QGuiApplication::screenAt(editor.viewport()->mapToGlobal(place)) != nullptr;
}

} // namespace

QList<QByteArray> beginningWith(const QList<QByteArray> &words, const QByteArray &beginning)
{
    QList<QByteArray> fitting;
    for (const QByteArray &word : words)
        if (word.startsWith(beginning) && fitting.size() < mostListed)
            fitting += word;
    // Who has written a whole name is asked nothing.
    if (const qsizetype exact = fitting.indexOf(beginning); exact > 0)
        fitting.move(exact, 0);
    return fitting;
}

Offer NameOffer::fitting(const CodeEditor &editor)
{
    const long caret = editor.send(S::SCI_GETCURRENTPOS);
    if (editor.language() == Language::Plain || !mayBeMarkup(editor, caret))
        return {};
    const Sight sight = look(editor, caret);
    const char next = byteAt(editor, caret);
    Offer offer;
    offer.start = sight.window.start + long(sight.place.word);
    names_.look(editor, caret);
    const long name = nameStart(editor, caret);
    const bool entity = name > 0 && byteAt(editor, name - 1) == '&';
    switch (sight.place.place) {
    case Place::ElementName:
        offer.words = names_.elements();
        break;
    case Place::EndName:
        offer.words = sight.open.isEmpty() ? QList<QByteArray>() : QList<QByteArray>{sight.open};
        offer.tail = next == '>' ? "" : ">";
        break;
    case Place::AttributeName:
        offer.words = names_.attributes(sight.tag);
        remove(offer.words, attributesGiven(editor, sight));
        break;
    case Place::AttributeValue:
    case Place::Text:
        if (entity) {
            offer.words = names_.entities();
            offer.start = name;
            offer.tail = next == ';' ? "" : ";";
        } else if (sight.place.place == Place::AttributeValue) {
            offer.words = names_.values(sight.attribute);
        }
        break;
    case Place::RawText:
    case Place::InTag:
    case Place::Elsewhere:
        break;
    }
    offer.words = beginningWith(offer.words, written(editor, offer.start));
    return offer;
}

bool NameOffer::isOpen(const CodeEditor &editor) { return editor.send(S::SCI_AUTOCACTIVE) != 0; }

void NameOffer::close(CodeEditor &editor)
{
    if (isOpen(editor))
        editor.send(S::SCI_AUTOCCANCEL);
}

bool NameOffer::show(CodeEditor &editor)
{
    offer_ = fitting(editor);
    return list(editor, true);
}

void NameOffer::follow(CodeEditor &editor, bool mayOpen)
{
    const long caret = editor.send(S::SCI_GETCURRENTPOS);
    if (isOpen(editor) && caret > offer_.start) {
        offer_.words = beginningWith(offer_.words, written(editor, offer_.start));
    } else if (!mayOpen && shownAt_ >= 0 && caret > shownAt_) {
        // What was deleted may have been the mistake for which the list went away.
        const long start = shownAt_;
        offer_ = fitting(editor);
        if (offer_.start != start) {
            offer_.words.clear();
            shownAt_ = -1;
        }
    } else if (mayOpen) {
        // Whether the letter is the first of its word is seen before anything is read.
        const long first = editor.send(S::SCI_POSITIONBEFORE, ulong(caret));
        const char before = first > 0 ? byteAt(editor, first - 1) : '\0';
        offer_ = isNameByte(before) ? Offer() : fitting(editor);
        if (offer_.start != first)
            offer_.words.clear();
    } else {
        offer_.words.clear();
    }
    if (!list(editor, false))
        close(editor);
}

// Without withExactOnly a list of nothing but what is written already is not worth showing.
bool NameOffer::list(CodeEditor &editor, bool withExactOnly)
{
    if (offer_.words.isEmpty() || !editor.isVisible() || !caretIsOnScreen(editor))
        return false;
    const QByteArray begun = written(editor, offer_.start);
    if (!withExactOnly && offer_.words.size() == 1 && offer_.words.first() == begun)
        return false;
    shownAt_ = offer_.start;
    // Shown anew with fewer words, the list keeps the engine from choosing among those that fit no longer.
    editor.send(S::SCI_AUTOCSETSEPARATOR, '\n');
    editor.send(S::SCI_AUTOCSETTYPESEPARATOR, '\1');
    editor.send(S::SCI_AUTOCSETORDER, S::SC_ORDER_CUSTOM);
    editor.send(S::SCI_AUTOCSETMAXHEIGHT, mostShown);
    editor.send(S::SCI_AUTOCSETCANCELATSTART, 0);
    editor.SendScintilla(S::SCI_AUTOCSHOW, uintptr_t(begun.size()), offer_.words.join('\n').constData());
    for (QListWidget *shown : editor.findChildren<QListWidget *>())
        shown->setPalette(editor.palette());
    return isOpen(editor);
}

QByteArray NameOffer::chosenRest(const CodeEditor &editor) const
{
    const long chosen = editor.send(S::SCI_AUTOCGETCURRENT);
    return chosen < 0 || chosen >= offer_.words.size() ? QByteArray() : restOf(editor, offer_.words[chosen]);
}

QByteArray NameOffer::restOf(const CodeEditor &editor, const QByteArray &word) const
{
    const QByteArray begun = written(editor, offer_.start);
    return word.startsWith(begun) ? word.sliced(begun.size()) + offer_.tail : QByteArray();
}

} // namespace control
