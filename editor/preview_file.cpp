#include "editor/preview_file.h"

#include "platform/files/text_file.h"

#include <QFile>
#include <QFileInfo>

namespace editor {

namespace {

// Also true for a link that leads nowhere.
bool isTaken(const QString &path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

} // namespace

PreviewFile::PreviewFile(const QString &prefix)
{
    int number = 0;
    do {
        path_ = prefix + QString::number(number++);
    } while (isTaken(path_) || (!make() && isTaken(path_)));
}

PreviewFile::~PreviewFile() { remove(); }

// Never opens what is there already, nor what a link leads to.
bool PreviewFile::make()
{
    QFile file(path_);
    made_ = file.open(QIODevice::WriteOnly | QIODevice::NewOnly, QFile::ReadOwner | QFile::WriteOwner);
    return made_;
}

platform::Result<void> PreviewFile::write(const QByteArray &text, const files::TextEncoding &cameWith)
{
    const QFileInfo info(path_);
    const bool ours = made_ && info.exists() && !info.isSymLink();
    if (!ours && !make())
        return platform::Failure{QStringLiteral("The preview file %1 cannot be made.").arg(path_)};
    if (files::writeDocumentFile(path_, text, {cameWith, files::FileEnd::CrLf}))
        return {};
    return files::writeTextFile(path_, text);
}

void PreviewFile::remove()
{
    if (made_)
        QFile::remove(path_);
    made_ = false;
}

} // namespace editor
