#include "app/about.h"

#include "app/word_cycle.h"
#include "platform/dialogs/theme_icon.h"

#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QIcon>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace app {

namespace {

constexpr int pictureSide = 64; // pixels
constexpr int textWidth = 360; // pixels; keeps the warning to a readable measure

QString makersWebSite() { return QStringLiteral("https://zelph.example/"); }

QString disclaimer()
{
    return QStringLiteral("Free software, without warranty of any kind to the extent that the law permits: "
                          "you may use it, pass it on "
                          "and change it under the terms of the GNU General Public License, version 3, which "
                          "its editor component "
                          "(QScintilla) asks for. The program's own source is also yours under the Expat "
                          "licence. Keep copies of your "
                          "documents.");
}

QLabel *heading(QWidget *parent)
{
    auto *label = new QLabel(QStringLiteral("Zelph XML Editor"), parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.5);
    font.setBold(true);
    label->setFont(font);
    return label;
}

QLabel *version(QWidget *parent)
{
    const QString number = QCoreApplication::applicationVersion();
    auto *label = new QLabel(number.isEmpty() ? QString() : QStringLiteral("Version %1").arg(number), parent);
    label->setVisible(!number.isEmpty());
    return label;
}

QLabel *steppingWord(QWidget *parent)
{
    auto *label = new QLabel(QStringLiteral("XML"), parent);
    label->setObjectName(QStringLiteral("lblWord"));
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.25);
    font.setBold(true);
    label->setFont(font);
    auto *timer = new QTimer(parent);
    timer->setObjectName(QStringLiteral("Timer1"));
    QObject::connect(timer, &QTimer::timeout, label, [label] { label->setText(nextWord(label->text())); });
    timer->start(wordInterval);
    return label;
}

QLabel *link(QWidget *parent, std::function<void(const QString &)> openAddress)
{
    auto *label = new QLabel(QStringLiteral("<a href=\"%1\">%1</a>").arg(makersWebSite()), parent);
    label->setObjectName(QStringLiteral("lblLink"));
    label->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    QObject::connect(label, &QLabel::linkActivated, label, std::move(openAddress));
    return label;
}

QLabel *warning(QWidget *parent)
{
    auto *label = new QLabel(disclaimer(), parent);
    label->setObjectName(QStringLiteral("lblDisclaimer"));
    label->setWordWrap(true);
    label->setMinimumWidth(textWidth);
    return label;
}

QLabel *picture(QWidget *parent)
{
    auto *label = new QLabel(parent);
    label->setPixmap(QIcon(dialogs::iconPath(QStringLiteral("xmleditor")))
                         .pixmap(QSize(pictureSide, pictureSide), parent->devicePixelRatioF()));
    label->setAlignment(Qt::AlignTop);
    return label;
}

} // namespace

frmAbout::frmAbout(QWidget *parent, std::function<void(const QString &)> openAddress) : QDialog(parent)
{
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("About - Zelph XML Editor"));

    auto *words = new QVBoxLayout;
    words->addWidget(heading(this));
    words->addWidget(version(this));
    words->addWidget(steppingWord(this));
    words->addSpacing(words->spacing());
    words->addWidget(warning(this));
    words->addWidget(link(this, std::move(openAddress)));

    auto *top = new QHBoxLayout;
    top->addWidget(picture(this));
    top->addSpacing(top->spacing());
    top->addLayout(words, 1);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(QStringLiteral("cmdok"));
    buttons->button(QDialogButtonBox::Ok)->setFocus();
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto *whole = new QVBoxLayout(this);
    whole->addLayout(top);
    whole->addWidget(buttons);
    whole->setSizeConstraint(QLayout::SetFixedSize);
}

} // namespace app
