// Text put between comment marks, and freed of them.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <optional>

namespace control {

struct CommentMarks
{
    QByteArrayView begin;
    QByteArrayView end;
};

inline constexpr CommentMarks markupComment{"<!--", "-->"};
inline constexpr CommentMarks codeComment{"/*", "*/"}; // of scripts and style sheets

// Put between comment marks, or freed of them when it is comments and blanks only; outer blanks stay outside.
// The marks of comments within markup are put away, to come out again with the text. Nothing when the text is
// blank, or holds what no comment may: part of one or "--"; in code any comment.
std::optional<QByteArray> commentToggled(QByteArrayView text, const CommentMarks &marks);

// Whole lines of a script, blank ones aside, each behind "//" or, when all are, freed of it. Nothing when all
// are blank.
std::optional<QByteArray> lineCommentsToggled(QByteArrayView lines);

// What a whole comment holds, without its marks and the blank at each end that commenting puts there.
QByteArray uncommented(QByteArrayView comment, const CommentMarks &marks);

} // namespace control
