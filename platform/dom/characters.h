// From markup to what it means, and back.
#pragma once

#include "platform/dom/verdict.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace dom {

// As it stands; unlike Qt's own, with a U+FEFF at the beginning, which is a character like any other here.
QString textOf(QByteArrayView utf8);

// Text content as it means: references resolved, line ends as line feeds.
QString decodeText(QByteArrayView raw);

// The content of a comment, CDATA section or processing instruction: only the line ends differ.
QString decodeVerbatim(QByteArrayView raw);

// An attribute's value as it means: references resolved, internal entities too (their expansion is bounded;
// what goes beyond is left as written), line ends and tabs as blanks.
QString decodeAttribute(QByteArrayView raw, const Entities &entities);

// The other way round. lineEnd is what a line feed is written as.
QByteArray encodeText(const QString &data, QByteArrayView lineEnd);
QByteArray encodeVerbatim(const QString &data, QByteArrayView lineEnd);
QByteArray encodeAttribute(const QString &value, char quote);

} // namespace dom
