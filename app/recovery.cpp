#include "app/recovery.h"

#include "document/session.h"
#include "platform/dialogs/dialogs.h"
#include "platform/files/atomic_write.h"
#include "platform/files/file_helpers.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>
#include <QMenu>

#include <algorithm>

namespace app {

namespace {

constexpr qsizetype large = 4'000'000; // bytes; to take that much could be felt while somebody types
constexpr qsizetype mostListed = 20;

QString timeOf(const QDateTime &time) { return QLocale().toString(time, QLocale::ShortFormat); }

QString nameOf(const document::RecoveryHead &head)
{
    return head.path.isEmpty() ? Recovery::tr("New Document") : files::fileNameOf(head.path);
}

// Ampersands in a name are no mnemonics.
QString caption(int place, const document::WaitingText &text)
{
    const QString name = text.damaged ? Recovery::tr("(damaged)") : nameOf(text.head);
    QString line = QStringLiteral("%1   %2").arg(name, timeOf(text.head.changed));
    line.replace(QLatin1Char('&'), QStringLiteral("&&"));
    return QStringLiteral("%1%2  %3").arg(QLatin1String(place < 10 ? "&" : "")).arg(place).arg(line);
}

// What the document is without the unsaved text.
QByteArray textOnDisk(const document::RecoveryHead &head)
{
    if (head.path.isEmpty())
        return document::newDocumentTemplate();
    const auto file = files::readTextFile(head.path);
    return file ? file->utf8 : QByteArray();
}

QString question(const document::RecoveryHead &head)
{
    const QString name = head.path.isEmpty() ? nameOf(head) : QDir::toNativeSeparators(head.path);
    QString text = Recovery::tr("The program ended before the changes to %1 were saved. Do you want to "
                                "recover them, as they were at %2?")
                       .arg(name, timeOf(head.changed));
    const QFileInfo file(head.path);
    if (!head.path.isEmpty() && !file.exists())
        text += QLatin1Char('\n') + Recovery::tr("The file itself is not there.");
    else if (!head.path.isEmpty() && !files::leftOfCutShort(head.path).isEmpty())
        text += QLatin1Char('\n') + Recovery::tr("The file itself was only written in part.");
    else if (!head.path.isEmpty() && file.lastModified() > head.changed)
        text += QLatin1Char('\n') + Recovery::tr("The file itself was changed after that.");
    return text + QLatin1Char('\n') + Recovery::tr("If not, they stay for a while in File, Recover Text.");
}

} // namespace

Recovery::Recovery(const Around &around)
    : around_(around), looking_(around.dataFolder + QStringLiteral("/recovery")),
      store_(around.dataFolder + QStringLiteral("/recovery")),
      writer_(store_, [this](const platform::Result<void> &result) {
          QMetaObject::invokeMethod(
              this, [this, result] { written(result); }, Qt::QueuedConnection);
      })
{
    rest_.setSingleShot(true);
    connect(&rest_, &QTimer::timeout, this, &Recovery::take);
    connect(&around_.menu, &QMenu::aboutToShow, this, &Recovery::fill);
    around_.menu.setToolTipsVisible(true);
    around_.session.saving().keepBy([this](const QByteArray &text) { keepNow(text); });
    store_.expire(QDateTime::currentDateTime());
    fill();
}

Recovery::~Recovery() { around_.session.saving().keepBy({}); }

void Recovery::edited()
{
    if (ended_)
        return;
    if (!waitingSince_.isValid())
        waitingSince_.start();
    const Pace &pace = around_.session.state().SavedXml.size() > large ? largePace_ : pace_;
    const qint64 left = pace.longest - waitingSince_.elapsed();
    const qint64 tooSoon = lastTaken_.isValid() ? pace.least - lastTaken_.elapsed() : 0;
    rest_.start(int(std::max({qMin(qint64(pace.rest), left), tooSoon, qint64(0)})));
}

void Recovery::settled()
{
    if (around_.session.saving().mayBeChanged())
        return edited();
    rest_.stop();
    waitingSince_.invalidate();
    writer_.drop();
}

void Recovery::take()
{
    waitingSince_.invalidate();
    lastTaken_.start();
    document::Saving &saving = around_.session.saving();
    const QByteArray text = saving.mayBeChanged() ? saving.currentText() : QByteArray();
    if (saving.mayBeChanged() && text != around_.session.state().SavedXml)
        writer_.write(copyOf(text));
    else
        writer_.drop();
}

document::RecoveryCopy Recovery::copyOf(const QByteArray &text) const
{
    document::Session &session = around_.session;
    const QString path = session.files().istmppath() ? QString() : session.state().CurrentFilePath;
    const document::Tab mode = session.saving().shownMode();
    return {{path, session.state().form, mode, QDateTime::currentDateTime()}, text};
}

void Recovery::keepNow(const QByteArray &text)
{
    writer_.write(copyOf(text));
    writer_.finish();
}

void Recovery::givenUp(const QByteArray &text) { writer_.keep(copyOf(text)); }

void Recovery::end()
{
    ended_ = true;
    rest_.stop();
    writer_.drop();
}

void Recovery::endUnsaved()
{
    ended_ = true;
    rest_.stop();
    take();
    writer_.finish();
}

void Recovery::written(const platform::Result<void> &result)
{
    if (!result && !toldOfFailure_)
        around_.fileNote(tr("Changes are not kept for recovery: %1").arg(result.reason()));
    toldOfFailure_ = !result;
}

QList<document::WaitingText> Recovery::waiting()
{
    writer_.finishKeeping();
    return looking_.waiting();
}

// One document can be open: what is not looked at after the first Yes is asked about at the next start.
void Recovery::offer()
{
    for (document::WaitingText &text : waiting())
        if (text.abandoned && looking_.claim(text) && offerOne(text))
            return;
}

// What its beginning or its size shows to be damaged is not read, however long it is.
bool Recovery::offerOne(document::WaitingText &text)
{
    const auto opened
        = text.damaged ? platform::Result<document::OpenedCopy>(document::OpenedCopy()) : looking_.open(text);
    if (!opened || !opened->whole) {
        looking_.retire(text);
        around_.note(tr("What was kept for recovery at %1 is damaged.").arg(timeOf(text.head.changed)));
        return false;
    }
    if (opened->copy.text == textOnDisk(opened->copy.head)) {
        looking_.remove(text);
        return false;
    }
    if (ask(opened->copy))
        return open(text, *opened);
    looking_.retire(text);
    return false;
}

bool Recovery::ask(const document::RecoveryCopy &copy)
{
    return around_.dialogs.message(dialogs::Icon::Question, dialogs::Buttons::YesNo, question(copy.head))
        == dialogs::Answer::Yes;
}

bool Recovery::open(const document::WaitingText &text, const document::OpenedCopy &opened)
{
    const document::RecoveryCopy &copy = opened.copy;
    if (!around_.session.life().recover(copy.head.path, copy.text, copy.head.form, copy.head.mode))
        return false;
    writer_.finish();
    if (opened.whole)
        store_.adopt(text);
    else // what is shown may not be all that somebody could yet make of the file
        around_.note(text.size <= document::RecoveryStore::mostDamaged
                         ? tr("The text was damaged; this is what is left of it.")
                         : tr("The text was damaged; this is the beginning of %1.").arg(text.file));
    return true;
}

void Recovery::choose(const document::WaitingText &chosen)
{
    document::WaitingText text = chosen;
    const auto opened = text.abandoned && !looking_.claim(text)
        ? platform::Result<document::OpenedCopy>(platform::Failure{tr("Another window has this text.")})
        : looking_.open(text);
    if (opened)
        open(text, *opened);
    else
        around_.note(opened.reason());
}

void Recovery::fill()
{
    around_.menu.clear();
    int place = 0;
    QList<document::WaitingText> texts = waiting();
    texts.resize(qMin(texts.size(), mostListed));
    for (const document::WaitingText &text : texts) {
        QAction *item = around_.menu.addAction(caption(++place, text), this, [this, text] { choose(text); });
        item->setToolTip(text.head.path.isEmpty() ? nameOf(text.head)
                                                  : QDir::toNativeSeparators(text.head.path));
    }
    if (place != 0)
        around_.menu.addSeparator();
    QAction *clear = around_.menu.addAction(tr("&Delete Kept Texts"), this, &Recovery::deleteKept);
    clear->setEnabled(place != 0);
}

void Recovery::deleteKept()
{
    const QString text = tr("Do you want to delete all texts that are kept for recovery?");
    if (around_.dialogs.message(dialogs::Icon::Question, dialogs::Buttons::YesNo, text)
        != dialogs::Answer::Yes)
        return;
    for (document::WaitingText &kept : waiting())
        if (!kept.abandoned || looking_.claim(kept))
            looking_.remove(kept);
}

} // namespace app
