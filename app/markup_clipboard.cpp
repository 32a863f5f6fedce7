#include "app/markup_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <memory>

namespace app {

namespace {

const QString plainText = QStringLiteral("text/plain");

class MarkupData : public QMimeData
{
public:
    explicit MarkupData(const QByteArray &markup) : markup_(markup) { }

    QStringList formats() const override { return {plainText}; }
    bool hasFormat(const QString &format) const override { return format == plainText; }

protected:
    QVariant retrieveData(const QString &format, QMetaType) const override
    {
        return format == plainText ? QVariant(QString::fromUtf8(markup_)) : QVariant();
    }

private:
    QByteArray markup_;
};

} // namespace

void putMarkupOnClipboard(const QByteArray &markup)
{
    auto data = std::make_unique<MarkupData>(markup);
    QGuiApplication::clipboard()->setMimeData(data.release()); // which it owns
}

} // namespace app
