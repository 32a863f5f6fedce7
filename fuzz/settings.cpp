// Any bytes as the file of settings, and any texts in it: the editor takes what it can, and shows the text.
#include "editor/editor_settings.h"
#include "fuzz/require.h"
#include "platform/control/code_editor.h"
#include "platform/control/shortcut_table.h"
#include "platform/system/settings_store.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

#include <fuzzer/FuzzedDataProvider.h>

using fuzz::require;

namespace {

// Sections and names as they are kept, so that values meet a reader.
const QByteArrayList keys
    = QByteArray("colors/txt colors/window options/selbounds options/leftmargin options/closeOnSlash "
                 "data/numbering data/numberingstyle data/numberingstart font/size font/name font/bold "
                 "fontstyle/0_ fontstyle/11_ m1/137 v1/137 m2/137 v2/137")
          .split(' ');

QByteArray bytesOf(FuzzedDataProvider &input, std::size_t most)
{
    return QByteArray::fromStdString(input.ConsumeRandomLengthString(most));
}

QByteArray iniOf(FuzzedDataProvider &input)
{
    if (input.ConsumeBool())
        return QByteArray::fromStdString(input.ConsumeRemainingBytesAsString());
    QByteArray text = "[cEdit]\n";
    while (input.remaining_bytes() > 0) {
        const QByteArray &key = keys[input.ConsumeIntegralInRange<qsizetype>(0, keys.size() - 1)];
        text += QByteArray(key).replace('/', '\\') + '=' + bytesOf(input, 60) + '\n';
    }
    return text;
}

void checkKeys(FuzzedDataProvider &input)
{
    control::Shortcut asked;
    asked.Modifiers1 = input.ConsumeIntegralInRange(-2, 20);
    asked.VirtKey1 = QString::fromUtf8(bytesOf(input, 12));
    asked.Modifiers2 = input.ConsumeIntegralInRange(-2, 20);
    asked.VirtKey2 = QString::fromUtf8(bytesOf(input, 12));
    const auto taken = control::keysOf(asked);
    if (taken)
        require(control::keysOf(control::shortcutOf(*taken)) == taken, "keys are kept");
}

void checkSettings(const QByteArray &ini)
{
    static const QTemporaryDir folder;
    static int number = 0;
    const QString path = folder.filePath(QString::number(number++)); // one that no cache remembers
    QFile file(path);
    require(file.open(QIODevice::WriteOnly) && file.write(ini) == ini.size(), "the file is there");
    file.close();
    {
        static auto &editor = *new control::CodeEditor; // never ended, as the application
        control::ShortcutTable shortcuts;
        settings::SettingsStore store(path);
        editor::LoadEditorSettings(editor, store);
        editor::LoadEditorHotKeys(shortcuts, store);
        const auto saved = editor::SaveEditorSettings(editor, store); // a damaged file may refuse
        require(saved.ok() || !saved.reason().isEmpty(), "a refusal is explained");
        editor::SaveEditorHotKeys(shortcuts, store);
    }
    QFile::remove(path);
}

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Never ended: libFuzzer leaves when what Qt would take down with it has gone already.
    static const auto *const application = new QApplication(*argc, *argv);
    Q_UNUSED(application)
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    FuzzedDataProvider input(data, size);
    checkKeys(input);
    checkSettings(iniOf(input));
    return 0;
}
