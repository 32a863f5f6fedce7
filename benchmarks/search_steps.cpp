#include "search_steps.h"

#include "document_maker.h"
#include "measure.h"
#include "report.h"

#include "editor/editor_text.h"
#include "editor/replace_all.h"
#include "platform/control/text_search.h"

#include <QApplication>

#include <cstring>

namespace bench {

namespace {

constexpr char rare[] = "</catalogue>"; // stands once, at the end; what begins like it stands everywhere
constexpr double findAim = 3;
constexpr int mostReplaced = 100'000;

void find(const control::CodeEditor &editor, bool matchCase, double scan, const Report &report)
{
    const control::TextSearch search({.text = QString::fromLatin1(rare), .matchCase = matchCase});
    const control::SearchArea area(editor.textInPlace());
    qsizetype place = -1;
    const double time = milliseconds([&] { place = search.next(area, 0).match.start; }, 3);
    report.row(matchCase ? QStringLiteral("find a rare text, case and all")
                         : QStringLiteral("find a rare text, in any case"),
               time, "ms", {{scan, "a plain scan", findAim}});
    if (place < 0)
        report.note(QStringLiteral("The rare text was not found"));
}

// From the start to the end of so many matches.
control::TextMatch areaOf(const control::CodeEditor &editor, const control::TextSearch &search)
{
    const control::SearchArea area(editor.textInPlace());
    control::TextMatch covered;
    for (int count = 0; count < mostReplaced; ++count) {
        const auto found = search.next(area, covered.end);
        if (!found)
            break;
        covered.end = found.match.end;
    }
    return covered;
}

void replaceAll(control::CodeEditor &editor, const char *frequent, const Report &report)
{
    const auto search = std::make_shared<control::TextSearch>(
        control::SearchPattern{.text = QString::fromLatin1(frequent), .matchCase = true});
    const control::ReplacementText replacement(QStringLiteral("another"), *search, "\n");
    const control::TextMatch area = areaOf(editor, *search);
    editor::ReplaceAll work(editor, nullptr);
    qsizetype replaced = -1;
    QObject::connect(&work, &editor::ReplaceAll::finished,
                     [&](editor::ReplaceAll::Outcome, qsizetype count) { replaced = count; });
    const double time = milliseconds([&] {
        work.start(search, replacement, area);
        while (work.isRunning())
            QApplication::processEvents();
        paint(editor.viewport());
    });
    report.row(QStringLiteral("matches replaced"), double(replaced), "");
    report.row(QStringLiteral("replace them all until painted"), time, "ms");
    const double undoing = milliseconds([&] {
        editor.undo();
        paint(editor.viewport());
    });
    report.row(QStringLiteral("undo that until painted"), undoing, "ms");
}

} // namespace

void measureSearch(control::CodeEditor &editor, const Shape &shape, const Report &report)
{
    const QByteArrayView text = editor.textInPlace();
    const void *found = nullptr;
    const double scan
        = milliseconds([&] { found = memmem(text.data(), size_t(text.size()), rare, sizeof rare - 1); }, 3);
    report.row(QStringLiteral("yardstick: plain scan"), found == nullptr ? 0 : scan, "ms");
    find(editor, true, scan, report);
    find(editor, false, scan, report);
    replaceAll(editor, shape.frequent, report);
}

} // namespace bench
