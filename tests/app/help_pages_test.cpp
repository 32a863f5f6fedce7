// The help against the program: it names every command with its key, leads nowhere that is not there, and its
// search knows every page. The data of the search page is made here: with XE_UPDATE_HELP set it is written
// anew.
#include "app/commands.h"
#include "editor/key_assignment.h"
#include "editor/properties_dialog.h"
#include "platform/control/code_editor.h"
#include "platform/control/editor_commands.h"
#include "tidy/option_catalogue.h"

#include <QTest>
#include <QXmlStreamReader>
#include <QtWidgets>

using namespace Qt::StringLiterals;

namespace {

QString latin1(const char *text) { return QString::fromLatin1(text); }

QDir folder() { return QDir(QStringLiteral(XE_HELP)); }

const QString contents = u"Zelph.htm"_s;
const QString indexPage = u"opens_index_first.htm"_s;
const QString searchPage = u"opens_search_first.htm"_s;

struct Passage
{
    QString anchor; // its own, or empty
    QString text;
};

struct Section
{
    QString anchor;
    QString title;
    QList<Passage> passages;
};

struct Page
{
    QString error; // why it could not be read
    QStringList ids;
    QStringList links; // and pictures
    QStringList chapters; // links of the list beside the page
    QHash<QString, QStringList> cells; // of each table row that has an id
    QList<Section> sections;

    QString text() const
    {
        QString all;
        for (const Section &section : sections) {
            all += section.title + u'\n';
            for (const Passage &passage : section.passages)
                all += passage.text + u'\n';
        }
        return all;
    }
};

// Reads a page, which is written so that it is XML as well.
class PageReader
{
public:
    explicit PageReader(const QString &file) : file_(folder().filePath(file)) { }

    Page read()
    {
        if (file_.open(QIODevice::ReadOnly))
            xml_.setDevice(&file_);
        while (!xml_.atEnd()) {
            xml_.readNext();
            if (xml_.isStartElement())
                open(xml_.name().toString(), xml_.attributes());
            else if (xml_.isEndElement())
                close(xml_.name().toString());
            else if (xml_.isCharacters() && inMain_ && skipped_ == 0)
                text_ += xml_.text();
        }
        page_.error = xml_.errorString();
        return page_;
    }

private:
    static bool isHeading(const QString &name) { return name == u"h1" || name == u"h2" || name == u"h3"; }
    // What ends the passage before it; a term and what is said about it are one passage.
    static bool isBlock(const QString &name)
    {
        static const QStringList blocks = u"p li dt tr pre figcaption nav"_s.split(u' ');
        return blocks.contains(name) || isHeading(name);
    }
    // Lists of links and heads of tables say nothing of their own, and scripts are no text.
    static bool isSkipped(const QString &name, const QString &kind)
    {
        return name == u"nav" || name == u"thead" || name == u"script" || kind == u"toc"
            || kind == u"contents";
    }

    void open(const QString &name, const QXmlStreamAttributes &attributes)
    {
        const QString id = attributes.value(u"id"_s).toString();
        const QString kind = attributes.value(u"class"_s).toString();
        if (!id.isEmpty())
            page_.ids.append(id);
        take(name, attributes);
        inMain_ = inMain_ || name == u"main";
        inChapters_ = inChapters_ || kind == u"chapters";
        if (isBlock(name))
            flush();
        if (isSkipped(name, kind) || skipped_ > 0)
            ++skipped_;
        if (isBlock(name))
            anchor_ = id;
        if (name == u"tr")
            row_ = id;
        if (name == u"td")
            cellStart_ = text_.size();
    }

    void take(const QString &name, const QXmlStreamAttributes &attributes)
    {
        const auto value = [&](const char *key) { return attributes.value(QLatin1String(key)).toString(); };
        if (name == u"a" || name == u"link")
            (inChapters_ ? page_.chapters : page_.links).append(value("href"));
        else if (name == u"form")
            page_.links.append(value("action"));
        else if (name == u"img")
            page_.links.append(value("src"));
    }

    void close(const QString &name)
    {
        if (isHeading(name) && skipped_ == 0) {
            page_.sections.append({anchor_, text_.simplified(), {}});
            text_.clear();
        } else if (name == u"dt") {
            text_ += u": "_s;
        } else if (name == u"td") {
            if (!row_.isEmpty())
                page_.cells[row_].append(text_.sliced(cellStart_).simplified());
            text_ += u" \u00b7 "_s;
        } else if (isBlock(name) || name == u"dd") {
            flush();
        }
        inMain_ = inMain_ && name != u"main";
        inChapters_ = inChapters_ && name != u"nav";
        skipped_ = std::max(0, skipped_ - 1);
    }

    void flush()
    {
        QStringList parts = text_.simplified().split(u" \u00b7"_s);
        parts.removeAll(QString());
        const QString text = parts.join(u" \u00b7"_s).trimmed();
        if (!text.isEmpty() && !page_.sections.isEmpty())
            page_.sections.last().passages.append({anchor_, text});
        text_.clear();
        anchor_.clear();
    }

    QFile file_;
    QXmlStreamReader xml_;
    Page page_;
    QString text_;
    QString anchor_;
    QString row_;
    qsizetype cellStart_ = 0;
    int skipped_ = 0; // depth within what is no text
    bool inMain_ = false;
    bool inChapters_ = false;
};

const QMap<QString, Page> &pages()
{
    static const QMap<QString, Page> all = [] {
        QMap<QString, Page> read;
        for (const QString &file : folder().entryList({u"*.htm"_s}))
            read.insert(file, PageReader(file).read());
        return read;
    }();
    return all;
}

Page page(const char *name) { return pages().value(latin1(name)); }

QString plain(QString caption) { return caption.remove(u'&').trimmed(); }

QString keysText(const QList<QKeySequence> &keys)
{
    return QKeySequence::listToString(keys, QKeySequence::PortableText).replace(u"; "_s, u", "_s);
}

// The keys the editor has at first.
QList<QKeySequence> editorKeys(int command)
{
    static const control::ShortcutTable table = editor::firstShortcuts();
    return table.shortcuts(command);
}

QString keyOf(const app::Command &row)
{
    return *row.shortcut != 0 || row.editorCommand == 0 ? latin1(row.shortcut)
                                                        : keysText(editorKeys(row.editorCommand).mid(0, 1));
}

QByteArray line(const QJsonArray &array)
{
    QByteArray json = QJsonDocument(array).toJson(QJsonDocument::Compact);
    return json.replace('<', "\\u003c").replace('>', "\\u003e").replace('&', "\\u0026");
}

// What the search page is to know of a page, one section a line.
QByteArray searchData(const QString &file, const Page &page)
{
    QByteArrayList sections;
    for (const Section &section : page.sections) {
        QJsonArray passages;
        for (const Passage &passage : section.passages)
            passages.append(QJsonArray{passage.anchor, passage.text});
        sections.append(line({section.anchor, section.title, passages}));
    }
    return "[\"" + file.toUtf8() + "\", [\n" + sections.join(",\n") + "\n]]";
}

QByteArray searchData()
{
    QByteArrayList all;
    for (const QString &file : pages().value(contents).chapters)
        all.append(searchData(file, pages().value(file)));
    return "[\n" + all.join(",\n") + "\n]\n";
}

} // namespace

class HelpPagesTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void pagesAreSound()
    {
        QVERIFY(pages().size() > 3);
        for (const auto &[file, page] : pages().asKeyValueRange()) {
            QVERIFY2(page.error.isEmpty(), qPrintable(file + u": "_s + page.error));
            QCOMPARE(QSet<QString>(page.ids.begin(), page.ids.end()).size(), page.ids.size());
            QVERIFY2(!page.sections.isEmpty() && !page.sections.first().title.isEmpty(), qPrintable(file));
            QCOMPARE(page.chapters, pages()[contents].chapters);
            const bool isEntry = file == contents || file == indexPage || file == searchPage;
            QVERIFY2(isEntry || page.chapters.contains(file), qPrintable(file));
            for (const QString &link : page.links + page.chapters) {
                const QUrl url(link);
                const QString target = url.path().isEmpty() ? file : url.path();
                QVERIFY2(url.isRelative() && folder().exists(target), qPrintable(file + u" to "_s + link));
                QVERIFY2(!url.hasFragment() || pages().value(target).ids.contains(url.fragment()),
                         qPrintable(file + u" to "_s + link));
            }
        }
    }

    void menuItemsAndButtonsAreTold()
    {
        const Page told = page("menus.htm");
        const QString keys = page("keys.htm").text();
        for (const app::Command &row : app::commandTable()) {
            QVERIFY2(keys.contains(latin1(row.shortcut)), row.name);
            QString caption = plain(latin1(row.caption));
            if (*row.menu != 0 && caption != u"-") {
                const QStringList cells = told.cells.value(latin1(row.name));
                QCOMPARE(cells.value(0), caption);
                QCOMPARE(cells.value(1), keyOf(row));
                QVERIFY2(!cells.value(2).isEmpty(), row.name);
            }
            if (*row.toolbar != 0) {
                if (caption.endsWith(u"..."_s))
                    caption.chop(3);
                const QStringList cells = told.cells.value(latin1(row.toolbar) + u'-' + latin1(row.key));
                QCOMPARE(cells.value(0), *row.tip != 0 ? plain(latin1(row.tip)) : caption);
                QVERIFY2(!cells.value(1).isEmpty(), row.key);
            }
        }
        for (const app::Menu &menu : app::menuTable())
            QVERIFY2(told.ids.contains(latin1(menu.name)), menu.name);
    }

    void editorCommandsAreTold()
    {
        const Page told = page("keys.htm");
        for (const control::EditorCommand &command : control::editorCommands()) {
            const QStringList cells = told.cells.value(u"command-%1"_s.arg(command.number));
            QCOMPARE(cells.value(0), latin1(command.name));
            QCOMPARE(cells.value(1), keysText(editorKeys(command.number)));
            QVERIFY2(!cells.value(2).isEmpty(), command.name);
            QCOMPARE(cells.value(3).toInt(), command.number);
        }
    }

    void tidyOptionsAreListed()
    {
        const QString told = page("tidy.htm").text();
        for (int index = 0; index < int(tidy::optionCatalogue().size()); ++index) {
            if (!tidy::isListed(index))
                continue;
            const QString usual = tidy::defaultValue(index);
            const QString entry = tidy::optionCatalogue()[size_t(index)].nameText() + u' '
                + (usual.isEmpty() ? u"empty"_s : usual);
            QVERIFY2(told.contains(entry), qPrintable(entry));
        }
    }

    void editorPropertiesAreTold()
    {
        const QString told = page("editor.htm").text();
        control::CodeEditor editor(nullptr);
        const editor::PropertiesDialog dialog(editor, nullptr);
        QStringList captions;
        for (const QAbstractButton *button : dialog.findChildren<QAbstractButton *>())
            captions.append(plain(button->text()));
        for (const QLabel *label : dialog.findChildren<QLabel *>())
            if (label->buddy() != nullptr)
                captions.append(plain(label->text()).remove(u':'));
        const auto *tabs = dialog.findChild<QTabWidget *>();
        for (int tab = 0; tab < tabs->count(); ++tab)
            captions.append(plain(tabs->tabText(tab)));
        QVERIFY(captions.size() > 20);
        for (const QString &caption : captions)
            QVERIFY2(told.contains(caption), qPrintable(caption));
    }

    void searchKnowsEveryPage()
    {
        QFile file(folder().filePath(searchPage));
        QVERIFY(file.open(QIODevice::ReadWrite));
        const QByteArray whole = file.readAll();
        const QByteArray before = "<script type=\"application/json\" id=\"sections\">\n";
        const qsizetype start = whole.indexOf(before) + before.size();
        const qsizetype end = whole.indexOf("</script>", start);
        QVERIFY(start > before.size() && end > start);
        if (qEnvironmentVariableIsSet("XE_UPDATE_HELP")) {
            file.resize(0);
            file.write(whole.first(start) + searchData() + whole.sliced(end));
            return;
        }
        QVERIFY2(whole.sliced(start, end - start) == searchData(),
                 "The search page is older than the others: run this test with XE_UPDATE_HELP set.");
    }
};

QTEST_MAIN(HelpPagesTest)
#include "help_pages_test.moc"
