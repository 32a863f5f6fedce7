// Any script of edits on any document: it stays one, notices tell all, and undoing restores the bytes.
#include "fuzz/require.h"
#include "tests/platform/dom/random_walk.h"

#include <fuzzer/FuzzedDataProvider.h>

using namespace dom;
using fuzz::require;

namespace {

constexpr int mostSteps = 60;

// Undo and redo in between, as a user would.
void goBackAndForth(Document &document, std::vector<ChangeSet> &done, int steps)
{
    const QByteArray now = document.xml();
    const auto count = std::min(done.size(), std::size_t(steps));
    for (std::size_t i = 0; i < count; ++i)
        document.revert(done[done.size() - 1 - i]);
    for (std::size_t i = count; i-- > 0;)
        document.reapply(done[done.size() - 1 - i]);
    require(document.xml() == now, "redone, it is the same");
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    const auto choose = [&input](int below) { return input.ConsumeIntegralInRange(0, below - 1); };
    const auto word = [&input, &choose] {
        return choose(2) ? randomWord(choose)
                         : QString::fromUtf8(QByteArray::fromStdString(input.ConsumeRandomLengthString(12)));
    };
    QByteArray text = QByteArray::fromStdString(input.ConsumeRandomLengthString(1000));
    Document document;
    if (document.load(text)) {
        text = randomDocument(choose, 20);
        require(!document.load(text), "a document of our own is well-formed");
    }
    Mirror mirror(document.documentNode());
    document.setObserver(&mirror);
    Walker walker(document, choose, word);
    std::vector<ChangeSet> done;
    while (input.remaining_bytes() > 0 && done.size() < mostSteps) {
        document.beginCommand();
        walker.step();
        done.push_back(document.endCommand());
        if (choose(8) == 0)
            goBackAndForth(document, done, 1 + choose(4));
        require(faultOf(document, mirror).isEmpty(), qPrintable(faultOf(document, mirror)));
    }
    for (auto changes = done.rbegin(); changes != done.rend(); ++changes)
        document.revert(*changes);
    require(document.xml() == text, "undone, it is the text it was");
    return 0;
}
