// What can have colours of its own in an editor, and where a sample shows it.
#pragma once

#include <QColor>
#include <QString>
#include <span>

namespace control {
struct Look;
}

namespace editor {

struct ColourClass
{
    int ink; // slot, or -1
    int ground; // slot, or -1
    int line; // of the sample, from 0
    const char *piece; // text in that line that shows the class; empty for the whole line
    const char *what; // for the user

    // The name of the slots it has.
    QString label() const;
};

// Every colour slot is in one of them.
std::span<const ColourClass> colourClasses();

// The class of that label; null when there is none.
const ColourClass *findColourClass(const QString &label);

// The colour that a slot is really shown in.
QColor shownIn(const control::Look &look, int slot);

// A page of markup, UTF-8, in which every class occurs; the lines with the bookmark and the highlight are
// told apart.
inline constexpr char sampleText[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE html>
<!-- A comment -->
<html lang="en" data-pages=12>
  <title>Text &copy; 2004</title>
  <script>total = price * 3;</script>
  <![CDATA[ if (a < b) ]]>
  <p class="bookmark">Marked</p>
  <p class="highlight">Pointed out</p>
</html>
)";
inline constexpr int sampleBookmarkLine = 7;
inline constexpr int sampleHighlightLine = 8;

} // namespace editor
