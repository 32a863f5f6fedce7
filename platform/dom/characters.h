// From markup to what it means. The way back is in spelling.h.
#pragma once

#include "platform/dom/verdict.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

namespace dom {

// As it stands; unlike Qt's own, with a U+FEFF at the beginning, which is a character like any other here.
QString textOf(QByteArrayView utf8);

// One character; Qt's own makes nothing of a U+FEFF.
QString textOf(char32_t character);

// Text content as it means: references resolved, line ends as line feeds.
QString decodeText(QByteArrayView raw);

// The content of a comment, CDATA section or processing instruction: only the line ends differ.
QString decodeVerbatim(QByteArrayView raw);

// An attribute's value as it means: references resolved, internal entities too (their expansion is bounded;
// what goes beyond is left as written), line ends and tabs as blanks.
QString decodeAttribute(QByteArrayView raw, const Entities &entities);

// The character that a reference stands for, of which name is what is between "&" and ";": a number or one of
// the five names that need no declaration. Nothing for a declared entity.
std::optional<char32_t> characterOf(QByteArrayView name);

} // namespace dom
