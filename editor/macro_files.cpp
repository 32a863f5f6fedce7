#include "editor/macro_files.h"

#include "platform/files/file_helpers.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <limits>
#include <optional>

namespace editor {

namespace {

constexpr QStringView ending = u"dem";

// A whole number, perhaps with a sign or blanks around it. One that is too large stands for no slot either.
std::optional<int> numberOf(QStringView text)
{
    text = text.trimmed();
    const QStringView digits = text.startsWith(u'-') || text.startsWith(u'+') ? text.sliced(1) : text;
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    if (digits.isEmpty() || !std::all_of(digits.begin(), digits.end(), isDigit))
        return {};
    bool fits = false;
    const int number = text.toInt(&fits);
    return fits ? number : std::numeric_limits<int>::max();
}

std::optional<int> slotIn(const QString &name)
{
    const qsizetype dot = name.indexOf(u'.');
    return dot < 0 ? std::nullopt : numberOf(QStringView(name).first(dot));
}

platform::Failure failed(const QString &path, const QString &why)
{
    return {QStringLiteral("The macro file %1 was skipped: %2.").arg(files::fileNameOf(path), why)};
}

platform::Result<void> writeOver(const QString &path, const QByteArray &bytes)
{
    const QFileInfo old(path);
    if (old.exists() && !old.isFile())
        return failed(path, QStringLiteral("it is no regular file"));
    QFile file(path);
    // Opened for both, a file keeps what it holds.
    if (!file.open(QIODevice::ReadWrite) || file.write(bytes) != bytes.size() || !file.flush())
        return failed(path, file.errorString());
    return {};
}

} // namespace

platform::Result<QByteArray> macroFileBytes(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return failed(path, QStringLiteral("it is no regular file"));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return failed(path, file.errorString());
    QByteArray bytes = file.read(control::mostMacroBytes + 1);
    if (file.error() != QFileDevice::NoError)
        return failed(path, file.errorString());
    if (bytes.size() > control::mostMacroBytes)
        return failed(path, QStringLiteral("it is too large"));
    bytes.append('\0');
    return bytes;
}

MacroFiles::MacroFiles(const QString &folder, control::MacroSlots &macros, const Note &note)
    : folder_(files::joinPath(folder, QStringLiteral("\\macros"))), macros_(macros), note_(note)
{ }

void MacroFiles::LoadMacros()
{
    int slot = 0;
    QDirIterator entries(folder_, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (entries.hasNext()) {
        const QString path = entries.next();
        const QString name = entries.fileName();
        if (!name.endsWith(ending))
            continue;
        slot = slotIn(name).value_or(slot);
        LoadMacroFile(path, slot);
    }
    kept_ = macros_;
}

void MacroFiles::LoadMacroFile(const QString &path, int slot)
{
    const platform::Result<QByteArray> bytes = macroFileBytes(path);
    if (!bytes)
        note_(bytes.reason());
    else if (!macros_.setMacro(slot, *bytes))
        note_(failed(path, QStringLiteral("there are only the slots 0 to 9")).reason);
    else if (macros_.macro(slot).isEmpty())
        note_(failed(path, QStringLiteral("it holds no macro")).reason);
}

void MacroFiles::SaveMacros()
{
    if (!QDir().mkpath(folder_)) {
        note_(QStringLiteral("The macros were not saved: the folder %1 cannot be made.").arg(folder_));
        return;
    }
    for (int slot = 0; slot < control::MacroSlots::count; ++slot)
        if (SaveMacroFile(QDir(folder_).filePath(QStringLiteral("%1.dem").arg(slot)), slot))
            kept_.setMacro(slot, macros_.macro(slot));
}

// What an emptied slot held stays in its file.
bool MacroFiles::hasUnsaved() const
{
    for (int slot = 0; slot < control::MacroSlots::count; ++slot)
        if (!macros_.macro(slot).isEmpty() && macros_.macro(slot) != kept_.macro(slot))
            return true;
    return false;
}

bool MacroFiles::SaveMacroFile(const QString &path, int slot)
{
    const QByteArray bytes = macros_.macro(slot);
    if (bytes.isEmpty())
        return true;
    const platform::Result<void> written = writeOver(path, bytes);
    if (!written)
        note_(written.reason());
    return written.ok();
}

} // namespace editor
