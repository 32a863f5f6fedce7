#include "app/encoding_menu.h"

#include "document/session.h"

#include <QAbstractButton>
#include <QActionGroup>

namespace app {

namespace {

// The names of a group's encodings, parted by blanks; a group without a caption stands in the menu itself.
struct Group
{
    const char *caption;
    const char *names;
};

constexpr Group groups[] = {
    {"", "Windows-1252 ISO-8859-1"},
    {"&Western European", "ISO-8859-15 US-ASCII ISO-8859-14 macintosh IBM437 IBM850 IBM00858 IBM860 IBM863"},
    {"&Central European", "Windows-1250 ISO-8859-2 ISO-8859-16 ISO-8859-3 IBM852"},
    {"&Baltic and Northern European", "Windows-1257 ISO-8859-13 ISO-8859-4 ISO-8859-10 IBM775 IBM861 IBM865"},
    {"C&yrillic", "Windows-1251 KOI8-R KOI8-U ISO-8859-5 IBM855 IBM866"},
    {"&Greek", "Windows-1253 ISO-8859-7 IBM737"},
    {"&Turkish", "Windows-1254 ISO-8859-9 IBM857"},
    {"&Hebrew and Arabic", "Windows-1255 ISO-8859-8 IBM862 Windows-1256 ISO-8859-6"},
    {"Th&ai and Vietnamese", "Windows-874 TIS-620 ISO-8859-11 Windows-1258"},
    {"&Japanese", "Shift_JIS EUC-JP ISO-2022-JP"},
    {"C&hinese", "GB18030 GBK GB2312 Big5 Big5-HKSCS EUC-TW"},
    {"&Korean", "EUC-KR ISO-2022-KR"},
};

// UTF-16 is always saved with its mark, which every reader understands; UTF-32 hardly any reads.
const QList<files::EncodingWish> &unicode(bool toSave)
{
    static const QList<files::EncodingWish> saved{
        {"UTF-8", false}, {"UTF-8", true}, {"UTF-16LE", true}, {"UTF-16BE", true}};
    static const QList<files::EncodingWish> read{
        {"UTF-8", false}, {"UTF-16LE", false}, {"UTF-16BE", false}, {"UTF-32LE", false}, {"UTF-32BE", false}};
    return toSave ? saved : read;
}

QString captionOf(const files::EncodingWish &wish)
{
    const QString name = QString::fromLatin1(wish.name);
    return wish.byteOrderMark ? EncodingMenu::tr("%1 with mark").arg(name) : name;
}

} // namespace

EncodingMenu::EncodingMenu(const Around &around) : around_(around)
{
    both_.setObjectName(QStringLiteral("encodings"));
    both_.addMenu(&around_.reopen);
    both_.addMenu(&around_.save);
    fill(around_.reopen, false,
         [this](const files::EncodingWish &wish) { around_.session.encodings().reopen(wish.name); });
    fill(around_.save, true,
         [this](const files::EncodingWish &wish) { around_.session.encodings().saveWith(wish); });
    connect(&around_.reopen, &QMenu::aboutToShow, this, [this] {
        mark(around_.reopen, true);
        const bool possible = around_.session.encodings().canReopen();
        const QList<QAction *> items = around_.reopen.actions();
        for (QAction *item : items)
            item->setEnabled(possible);
    });
    connect(&around_.save, &QMenu::aboutToShow, this, [this] { mark(around_.save, false); });
    connect(&around_.button, &QAbstractButton::clicked, this, &EncodingMenu::popUp);
}

void EncodingMenu::fill(QMenu &menu, bool toSave, const Chosen &chosen)
{
    auto *group = new QActionGroup(&menu); // of which one is in use, or none
    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    const auto add = [&](QMenu &in, const files::EncodingWish &wish) {
        QAction *item = in.addAction(captionOf(wish), this, [this, wish, chosen] {
            around_.beforeRun();
            chosen(wish);
        });
        item->setCheckable(true);
        group->addAction(item);
    };
    for (const files::EncodingWish &wish : unicode(toSave))
        add(menu, wish);
    for (const Group &row : groups) {
        const bool top = *row.caption == 0;
        QMenu &in = top ? menu : *menu.addMenu(tr(row.caption));
        const QList<QByteArray> names = QByteArray(row.names).split(' ');
        for (const QByteArray &name : names) {
            if (!toSave || name != "ISO-2022-KR") // which hides the declaration behind its first bytes
                add(in, {name, false});
        }
        if (top)
            menu.addSeparator();
    }
}

// By what the status bar shows, so that the two always say the same.
void EncodingMenu::mark(QMenu &menu, bool anyMark) const
{
    const QString shown = around_.button.text();
    const QList<QAction *> items = menu.actions();
    for (QAction *item : items) {
        if (item->menu() != nullptr)
            mark(*item->menu(), anyMark);
        else
            item->setChecked(item->text() == shown
                             || (anyMark && tr("%1 with mark").arg(item->text()) == shown));
    }
}

void EncodingMenu::popUp() { both_.popup(around_.button.mapToGlobal(QPoint(0, -both_.sizeHint().height()))); }

} // namespace app
