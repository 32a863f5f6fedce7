#include "app/splash.h"

#include "app/dependency_check.h"
#include "app/word_cycle.h"
#include "platform/dialogs/dialogs.h"
#include "platform/dialogs/theme_icon.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QListWidget>
#include <QScreen>

namespace app {

namespace {

constexpr int checkDelay = 2500; // milliseconds from the window's appearance to the check
constexpr QSize pictureSize(480, 280);
constexpr QRect wordPlace(32, 214, 200, 44); // where the picture leaves room for the word
constexpr int wordHeight = 26; // pixels
constexpr QRgb wordColour = qRgb(0xcf, 0xe8, 0xff); // the picture is dark in every theme

QLabel *makePicture(QWidget *parent)
{
    auto *picture = new QLabel(parent);
    picture->setObjectName(QStringLiteral("Picture1"));
    const qreal ratio = parent->devicePixelRatioF();
    picture->setPixmap(QIcon(dialogs::iconPath(QStringLiteral("splash"))).pixmap(pictureSize, ratio));
    picture->resize(pictureSize);
    return picture;
}

QLabel *makeWord(QWidget *parent)
{
    auto *word = new QLabel(QStringLiteral("XML"), parent);
    word->setObjectName(QStringLiteral("Label3"));
    word->setGeometry(wordPlace);
    QFont font = word->font();
    font.setPixelSize(wordHeight);
    font.setBold(true);
    word->setFont(font);
    QPalette palette = word->palette();
    palette.setColor(QPalette::WindowText, QColor(wordColour));
    word->setPalette(palette);
    return word;
}

// What is checked, as the form lists it.
void addEntryList(QWidget *parent)
{
    auto *list = new QListWidget(parent);
    list->setObjectName(QStringLiteral("List1"));
    list->addItems(requiredEntries());
    list->hide();
}

} // namespace

frmSplash::frmSplash(dialogs::Dialogs &dialogs, const QString &programFolder, std::function<void()> handOver)
    : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint), dialogs_(dialogs),
      programFolder_(programFolder), handOver_(std::move(handOver)), Picture1(makePicture(this)),
      Label3(makeWord(this))
{
    setObjectName(QStringLiteral("frmSplash"));
    setWindowTitle(QStringLiteral("Zelph XML Editor"));
    setFixedSize(Picture1->size());
    move(QGuiApplication::primaryScreen()->availableGeometry().center() - rect().center());
    addEntryList(this);

    Timer1.setObjectName(QStringLiteral("Timer1"));
    connect(&Timer1, &QTimer::timeout, this, &frmSplash::stepWord);
    Timer1.start(wordInterval);

    Timer2.setObjectName(QStringLiteral("Timer2"));
    Timer2.setSingleShot(true);
    connect(&Timer2, &QTimer::timeout, this, &frmSplash::check);
    Timer2.start(checkDelay);
}

void frmSplash::stepWord() { Label3->setText(nextWord(Label3->text())); }

void frmSplash::goOn()
{
    if (Timer2.isActive())
        Timer2.start(0);
}

void frmSplash::keyPressEvent(QKeyEvent *) { goOn(); }

void frmSplash::mousePressEvent(QMouseEvent *) { goOn(); }

void frmSplash::check()
{
    const QString missing = firstMissing(programFolder_);
    if (missing.isEmpty()) {
        handOver_();
        Timer1.stop();
        close();
        return;
    }
    Timer1.stop();
    close();
    dialogs_.message(dialogs::Icon::Critical, dialogs::Buttons::Ok, missingMessage(missing));
    QCoreApplication::exit(1);
}

} // namespace app
