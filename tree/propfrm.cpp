#include "tree/propfrm.h"

#include "platform/control/code_editor.h"
#include "platform/dialogs/window_size.h"
#include "tree/attpropfrm.h"
#include "tree/attribute_list.h"
#include "tree/label.h"
#include "tree/properties_box.h"
#include "tree/properties_fault.h"
#include "tree/properties_pages.h"
#include "tree/tree_model.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStackedWidget>
#include <QStatusBar>
#include <QVBoxLayout>
#include <algorithm>

namespace tree {

namespace {

constexpr int usualColumns = 88;
constexpr int usualLines = 22;

int imageAt(const QModelIndex &node) { return node.data(TreeModel::ImageRole).toInt(); }

QPushButton *makeButton(const QString &name, const QString &caption, QWidget *parent)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(name);
    return button;
}

} // namespace

bool Propfrm::edits(const QModelIndex &node)
{
    const int image = imageAt(node);
    return image >= ElementImage && image <= TextImage;
}

Propfrm::Propfrm(PropertyServices &services, dom::Document &document, TreeModel &model,
                 const QModelIndex &node, QWidget *parent)
    : QDialog(parent), services_(services), document_(document), model_(model), node_(node),
      pages_(new QStackedWidget(this)), status_(new QStatusBar(this))
{
    setObjectName(QStringLiteral("Propfrm"));
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(pages_, 1);
    for (int image = ElementImage; image <= TextImage; ++image) {
        auto *page = new PropertiesPage(image, pages_);
        pages_->addWidget(page);
        connect(page, &PropertiesPage::edited, this, [this](QWidget *field) {
            markFault(field, {});
            status_->clearMessage();
        });
    }
    page_ = static_cast<PropertiesPage *>(pages_->widget(qBound(1, imageAt(node), 5) - 1));
    pages_->setCurrentWidget(page_);
    setWindowTitle(page_->dialogCaption());
    addButtons();
    addKeys();
    if (page_->attributes())
        openAttributes();
    status_->setObjectName(QStringLiteral("StatusBar1"));
    layout->addWidget(status_);
    resize(dialogs::sizeInCharacters(*this, usualColumns, usualLines));
}

void Propfrm::addButtons()
{
    auto *symbols = makeButton(QStringLiteral("cmdsynbols"), QStringLiteral("&Symbols..."), this);
    auto *ok = makeButton(QStringLiteral("OKButton"), QStringLiteral("OK"), this);
    auto *cancel = makeButton(QStringLiteral("CancelButton"), QStringLiteral("Cancel"), this);
    auto *row = new QHBoxLayout;
    static_cast<QVBoxLayout *>(layout())->addLayout(row);
    row->addWidget(symbols);
    row->addStretch();
    row->addWidget(ok);
    row->addWidget(cancel);
    symbols->setEnabled(bool(services_.showSymbols));
    ok->setDefault(true);
    connect(symbols, &QPushButton::clicked, this, &Propfrm::cmdsynbols_Click);
    connect(ok, &QPushButton::clicked, this, &Propfrm::accept);
    connect(cancel, &QPushButton::clicked, this, &Propfrm::reject);
}

// In a code box Enter and Tab are text.
void Propfrm::addKeys()
{
    const auto bind = [this](QKeyCombination keys, auto run) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, run);
    };
    bind(Qt::CTRL | Qt::Key_Return, [this] { accept(); });
    bind(Qt::CTRL | Qt::Key_Enter, [this] { accept(); });
    bind(Qt::CTRL | Qt::Key_Tab, [this] { focusNextChild(); });
    bind(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, [this] { focusPreviousChild(); });
    bind(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab, [this] { focusPreviousChild(); });
}

void Propfrm::openAttributes()
{
    attribute_ = new attpropfrm(services_, *page_->attributes(), this);
    connect(page_->attributes(), &AttributeList::addRequested, attribute_, &attpropfrm::openToAdd);
    connect(page_->attributes(), &AttributeList::modifyRequested, attribute_, &attpropfrm::openToChange);
    // Back to where the dialog was called from.
    connect(attribute_, &QDialog::finished, page_->attributes(), [this] { page_->attributes()->setFocus(); });
}

Propfrm *Propfrm::around(QWidget *inside)
{
    while (inside && !qobject_cast<Propfrm *>(inside))
        inside = inside->parentWidget();
    return qobject_cast<Propfrm *>(inside);
}

// What a node was inserted with is there to be replaced.
void Propfrm::selectPlaceholder()
{
    static constexpr QLatin1StringView placeholders[]
        = {QLatin1StringView("Text"), QLatin1StringView("Data"), QLatin1StringView("Comment")};
    control::CodeEditor *box = page_->dataBox();
    if (box && !page_->nameField()
        && std::count(std::begin(placeholders), std::end(placeholders), dataOf(*box)))
        box->send(QsciScintillaBase::SCI_SELECTALL);
}

// Once, at the first activation; a window that nobody activates shows its node too.
void Propfrm::lodinfo()
{
    if (std::exchange(filled_, true))
        return;
    if (const dom::Node *node = model_.GetNodepar(node_))
        page_->fill(propertiesOf(*node));
    if (page_->nameField()) {
        page_->nameField()->selectAll();
        page_->nameField()->setFocus();
    } else {
        page_->contentField()->setFocus();
        selectPlaceholder();
    }
}

bool Propfrm::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        lodinfo();
    return QDialog::event(event);
}

void Propfrm::showEvent(QShowEvent *event)
{
    lodinfo();
    QDialog::showEvent(event);
}

void Propfrm::cmdsynbols_Click()
{
    if (page_->symbolTarget() != PropertiesPage::noTarget)
        services_.symbolTarget = page_->symbolTarget();
    services_.showSymbols(services_.symbolTarget, this);
}

void Propfrm::insertSymbols(int target, const QString &text)
{
    if (attribute_ && !attribute_->isVisible())
        page_->nameField()->insert(text);
    else if (attribute_ && target == 0)
        attribute_->insertSymbols(text);
    for (int i = 0; i < pages_->count(); ++i) {
        const auto *page = static_cast<PropertiesPage *>(pages_->widget(i));
        if (page->symbolTarget() == target && page->dataBox())
            page->dataBox()->replaceSelection(text.toUtf8());
    }
}

platform::Result<void> Propfrm::apply(dom::Node *node, const NodeProperties &properties)
{
    // An element that changed is labelled as it stands, and this belongs to the command.
    const PropertyServices::Edit edit = [&] {
        const quint64 before = document_.revision();
        auto done = setProperties(document_, node, properties);
        if (done && node->kind() == dom::NodeKind::Element && document_.revision() != before)
            model_.setLabelFrom(node_);
        return done;
    };
    if (services_.run)
        return services_.run(QStringLiteral("Edit Node"), edit);
    document_.beginCommand();
    auto done = edit();
    if (done)
        document_.endCommand();
    else
        document_.rollBack();
    return done;
}

void Propfrm::refuse(QWidget *field, const QString &reason)
{
    status_->showMessage(reason);
    markFault(field, reason);
    field->setFocus();
}

void Propfrm::accept()
{
    lodinfo(); // OK before anything was shown changes nothing
    dom::Node *node = model_.GetNodepar(node_);
    if (!node)
        return refuse(page_->contentField(), QStringLiteral("The node is no longer in the document"));
    const NodeProperties properties = page_->properties();
    if (const auto verdict = page_->nameField() ? checkName(*node, properties) : platform::Result<void>();
        !verdict)
        return refuse(page_->nameField(), verdict.reason());
    if (const auto done = apply(node, properties); !done)
        return refuse(page_->contentField(), done.reason());
    if (node->kind() == dom::NodeKind::Element)
        model_.setLabelFrom(node_);
    QDialog::accept();
}

} // namespace tree
