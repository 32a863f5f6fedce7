// Carries out one style sheet: reads the job from its input, answers on its output, and ends. A process of
// its own, because what a style sheet computes can be ended in no other way.
#include "platform/system/process_limits.h"
#include "tidy/transform_wire.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

constexpr int grace = 10; // seconds for who waits to end this first, and to say why
constexpr qint64 besides = qint64{512} << 20; // bytes for all that is no tree of the library's

QByteArray readBytes(qint64 count)
{
    QByteArray bytes(count, Qt::Uninitialized);
    bytes.truncate(qsizetype(std::fread(bytes.data(), 1, std::size_t(count), stdin)));
    return bytes;
}

std::optional<tidy::TransformJob> readJob()
{
    const QByteArray length = readBytes(tidy::lengthBytes);
    return length.size() == tidy::lengthBytes ? tidy::jobIn(readBytes(tidy::blockLength(length)))
                                              : std::nullopt;
}

void answer(const QByteArray &block)
{
    std::fwrite(block.constData(), 1, std::size_t(block.size()), stdout);
    std::fflush(stdout);
}

// The input stays open for as long as somebody waits for the result.
void endWithoutListener()
{
    std::thread([] {
        while (std::fgetc(stdin) != EOF) { }
        std::_Exit(EXIT_FAILURE);
    }).detach();
}

// The budget of the trees with room to spare, but never so much that the machine would have none left.
qint64 memoryFor(const tidy::TransformJob &job)
{
    const qint64 given = job.document.utf8.size() + job.styleSheet.utf8.size();
    const qint64 wanted = 2 * qint64(job.bounds.memory) + 160 * given + besides;
    const qint64 machine = shell::physicalMemory();
    return machine > 0 ? std::min(wanted, machine / 4 * 3) : wanted;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const auto job = readJob();
    if (!job)
        return EXIT_FAILURE;
    endWithoutListener();
    shell::limitThisProcess(memoryFor(*job), job->bounds.seconds + grace);
    answer(tidy::outcomeBlock(tidy::transform(
        *job, [](const tidy::TransformMessage &message) { answer(tidy::messageBlock(message)); })));
    std::_Exit(EXIT_SUCCESS); // whatever is still held goes with the process
}
