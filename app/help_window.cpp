#include "app/help_window.h"

#include "platform/browser/help_view.h"
#include "platform/dialogs/theme_icon.h"

#include <QAction>
#include <QLineEdit>
#include <QScreen>
#include <QToolBar>

namespace app {

namespace {

constexpr QSize firstSize(960, 680); // pixels

} // namespace

frmHelp::frmHelp(const QString &folder, QWidget *parent)
    : QMainWindow(parent, Qt::Window), bar_(addToolBar(tr("Help"))),
      pages_(new browser::HelpView(folder, this)), find_(new QLineEdit(bar_))
{
    setObjectName(QStringLiteral("frmHelp"));
    setWindowTitle(tr("Help - Zelph XML Editor"));
    setContextMenuPolicy(Qt::NoContextMenu);
    setCentralWidget(pages_);
    addActions();
    resize(firstSize.boundedTo(screen()->availableSize() * 9 / 10));
    connect(pages_, &browser::HelpView::pageChanged, this, &frmHelp::showPage);
    connect(pages_, &browser::HelpView::leftBy, this, &frmHelp::leftBy);
}

bool frmHelp::open(const QString &path)
{
    if (!pages_->show(path))
        return false;
    show();
    raise();
    activateWindow();
    pages_->setFocus();
    return true;
}

QString frmHelp::shownPage() const { return pages_->shownPage().toLocalFile(); }

void frmHelp::showPage(const QString &title)
{
    setWindowTitle(title.isEmpty() ? tr("Help - Zelph XML Editor") : title);
    back_->setEnabled(pages_->canGoBack());
    forward_->setEnabled(pages_->canGoForward());
}

QAction *frmHelp::add(const QString &caption, const char *name, const char *icon, const QKeySequence &keys,
                      const std::function<void()> &run)
{
    auto *action = new QAction(caption, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(keys);
    if (*icon != 0)
        action->setIcon(dialogs::themeIcon(QLatin1String(icon)));
    connect(action, &QAction::triggered, this, run);
    addAction(action);
    return action;
}

void frmHelp::addActions()
{
    bar_->setObjectName(QStringLiteral("HelpBar"));
    bar_->setMovable(false);
    bar_->addAction(
        back_ = add(tr("Back"), "helpBack", "go-previous", QKeySequence::Back, [this] { pages_->back(); }));
    bar_->addAction(forward_ = add(tr("Forward"), "helpForward", "go-next", QKeySequence::Forward,
                                   [this] { pages_->forward(); }));
    auto *gap = new QWidget(bar_);
    gap->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    bar_->addWidget(gap);
    find_->setObjectName(QStringLiteral("HelpFind"));
    find_->setPlaceholderText(tr("Find on this page"));
    find_->setClearButtonEnabled(true);
    find_->setMaximumWidth(fontMetrics().averageCharWidth() * 28);
    connect(find_, &QLineEdit::textChanged, pages_, [this](const QString &text) { pages_->find(text); });
    connect(find_, &QLineEdit::returnPressed, pages_, [this] { pages_->find(find_->text()); });
    bar_->addWidget(find_);
    add(tr("Find on this page"), "helpFindHere", "", QKeySequence::Find, [this] {
        find_->setFocus();
        find_->selectAll();
    });
    add(tr("Larger"), "helpLarger", "", QKeySequence::ZoomIn, [this] { pages_->zoom(1); });
    add(tr("Smaller"), "helpSmaller", "", QKeySequence::ZoomOut, [this] { pages_->zoom(-1); });
    add(tr("Usual size"), "helpUsualSize", "", QKeySequence(Qt::CTRL | Qt::Key_0),
        [this] { pages_->zoom(0); });
    add(tr("Close"), "helpClose", "", QKeySequence(Qt::Key_Escape), [this] { close(); });
}

} // namespace app
