#include "app/markup_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <memory>

namespace app {

namespace {

constexpr qsizetype largestText = 256 << 20; // characters; beyond that nobody means to paste it

QString plainText() { return QStringLiteral("text/plain"); }
QString nodeFormat() { return QStringLiteral("application/x-zelph-node"); }

class NodeData : public QMimeData
{
public:
    explicit NodeData(tree::CopiedNode node) : node_(std::move(node)) { }

    QStringList formats() const override { return {nodeFormat(), plainText()}; }
    bool hasFormat(const QString &format) const override { return formats().contains(format); }

protected:
    QVariant retrieveData(const QString &format, QMetaType) const override
    {
        if (format == nodeFormat())
            return node_.asElement();
        return format == plainText() ? QVariant(QString::fromUtf8(node_.asText())) : QVariant();
    }

private:
    tree::CopiedNode node_;
};

const QMimeData *held() { return QGuiApplication::clipboard()->mimeData(); }

bool holds(const QMimeData *data, const QString &format) { return data && data->hasFormat(format); }

} // namespace

QString sourceFormat() { return QStringLiteral("application/x-zelph-source"); }

MarkupClipboard::MarkupClipboard()
{
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, &MarkupClipboard::look);
    look();
}

void MarkupClipboard::look()
{
    const QMimeData *data = held();
    holdsText_ = holds(data, plainText()) || holds(data, nodeFormat());
}

void MarkupClipboard::put(const tree::CopiedNode &node)
{
    auto data = std::make_unique<NodeData>(node);
    put_ = data.get();
    QGuiApplication::clipboard()->setMimeData(data.release()); // which it owns
}

bool MarkupClipboard::holdsWhatWasPut() const { return put_ && held() == put_; }

platform::Result<tree::Clip> MarkupClipboard::read() const
{
    using Form = tree::Clip::Form;
    const QMimeData *data = held();
    tree::Clip clip;
    if (holds(data, nodeFormat()))
        clip = {Form::Node, QString::fromUtf8(data->data(nodeFormat()))};
    else if (holds(data, plainText()))
        clip = {holds(data, sourceFormat()) ? Form::Source : Form::Text, data->text()};
    if (clip.text.isEmpty())
        return platform::Failure{QStringLiteral("There is no text on the clipboard")};
    if (clip.text.size() > largestText)
        return platform::Failure{QStringLiteral("The text on the clipboard is too long to be pasted")};
    return clip;
}

} // namespace app
