// Words that stand in a text for what Tidy is not to see.
#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

namespace launcher {

class StandIns
{
public:
    // For a text in which none of them occurs by itself.
    explicit StandIns(QByteArrayView text);

    // The word for a number: no letters, whose case Tidy might change.
    QByteArray word(qsizetype number) const;

    struct Found
    {
        qsizetype begin;
        qsizetype end;
        qsizetype number;
    };

    // The first one from a byte on whose number is below a bound.
    std::optional<Found> next(QByteArrayView text, qsizetype from, qsizetype bound) const;

private:
    QByteArray key_; // begins every one of them
};

// The line ends of a text alone, so that those behind it stay on their lines.
QByteArray lineEndsOf(QByteArrayView text);

// Every line end as the given one; the text itself when that is empty.
QByteArray withLineEnds(QByteArray text, const QByteArray &lineEnd);

// Text in which nothing is taken for a reference that has no name: Tidy loses a character of such.
QByteArray withPlainReferences(QByteArray text);

// Text as XML writes it.
QByteArray escaped(QByteArray text);

} // namespace launcher
