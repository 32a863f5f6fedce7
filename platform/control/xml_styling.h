// Colours and folds an editor's text while its language is XML or HTML: what is in sight when it comes into
// sight, from a place near by, however long the text is. What the text is at such places is found out while
// nobody waits. In other languages only lines that are very long are looked after, when a lexer has coloured
// them.
#pragma once

#include "platform/control/markup_map.h"

#include <QObject>
#include <QTimer>
#include <optional>
#include <vector>

namespace control {

class CodeEditor;

class XmlStyling : public QObject
{
public:
    // Belongs to the editor.
    explicit XmlStyling(CodeEditor &editor);

    // The text or its language is another one.
    void restart();
    // The text is about to change so.
    void inserted(long at, long length);
    void deleted(long at, long length);
    // The text has changed: no line stays hidden that nothing could show again.
    void settle();

    // What is in sight may be other lines than before.
    void aboutToPaint();
    // Colours what is in sight.
    void styleSight();
    // What is typed in the caret's line had better be coloured before the line is measured.
    bool caretLineIsLong() const;

    bool isOn() const;
    // The styles of a stretch of the text, in sight or not.
    QByteArray stylesOf(long start, long end);

    // For folding. Levels of lines are the number of elements that they begin in, counted from an own base;
    // they are set for what is in sight, and for what was asked for here.

    // The depth that the engine takes for the outermost until a command needs another.
    static constexpr int firstBase = 0;
    // The line and the block it begins.
    void knowBlock(long line);
    // All lines, such that the engine takes that depth for the outermost.
    void knowAll(int outermost = firstBase);
    // The least depth of lines that begin blocks within blocks, if there are any.
    std::optional<int> innerDepth() const;
    // Elements that the line begins in.
    int depthOf(long line);
    bool beginsBlock(long line);
    // The line that the block around the line begins in, which may be itself; -1 when there is none.
    long blockStart(long line);

private:
    // What all lines had their levels for.
    struct Levelled
    {
        quint64 revision = 0;
        quint64 round = 0;
        int outermost = -1;
        bool operator==(const Levelled &) const = default;
    };
    // A long line that was styled last.
    struct LongLine
    {
        quint64 revision = 0;
        quint64 round = 0;
        long line = -1;
        bool operator==(const LongLine &) const = default;
    };
    struct Lines
    {
        long first = 0;
        long last = 0;
    };

    // A stretch of the text that is another one than the map knows.
    struct Change
    {
        long start = 0;
        long removed = 0;
        long added = 0;
    };

    bool isHtml() const;
    MarkupMap::Place textStart() const;
    MarkupMap &map();
    void takeIn(long start, long end);
    MarkupSource source() const;
    long lineStart(long line) const;
    MarkupMap::Place placeAt(long position);
    std::vector<Lines> linesInSight() const;
    void styleLines(const Lines &lines);
    void styleStretch(long start, long end, const Lines &lines);
    void styleLongLine(long line);
    void partLongLines();
    void partLexedLine(long start, long end);
    void makeRoomForWidths(long line, long length);
    void noteLongLine(long line, long length);
    void setLevel(long line, int before, int after);
    void shiftHidden(long line, int levels);
    void knowTo(long position);
    void readOn();
    long lastLower(const MarkupMap::Place &from, long before, int depth);

    CodeEditor &editor_;
    MarkupMap map_; // to be had from map(), but for clearing it
    std::optional<Change> change_;
    QTimer idle_;
    std::optional<quint64> styled_; // the revision that is styled, until the next painting
    quint64 round_ = 0; // of what is known of the text
    bool guessed_ = false; // what is in sight
    int base_ = firstBase;
    Levelled levelled_;
    LongLine longLine_;
    bool noted_ = false; // that a line of the text is too long to be edited without waiting
    bool styling_ = false;
};

} // namespace control
