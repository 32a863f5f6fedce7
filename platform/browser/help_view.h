// The program's own pages, read from one folder: help that neither needs another browser nor leaves the
// program.
#pragma once

#include <QUrl>
#include <QWebEngineView>
#include <QWidget>
#include <memory>

class QWebEngineProfile;

namespace browser {

class HelpView : public QWidget
{
    Q_OBJECT

public:
    // folder: where the pages stand (it must be there); nothing outside of it is ever shown.
    explicit HelpView(const QString &folder, QWidget *parent = nullptr);
    ~HelpView() override;

    // path: of a page in the folder. One that is not there leaves the page as it was; false then.
    bool show(const QString &path);

    void back();
    void forward();
    bool canGoBack() const;
    bool canGoForward() const;

    // Steps of a tenth; 0 puts the usual size back.
    void zoom(int steps);

    // Marks the text on the page and goes to its next (or previous) place. Empty takes the marks away.
    void find(const QString &text, bool backward = false);

    QUrl shownPage() const;

Q_SIGNALS:
    void pageChanged(const QString &title);

    // A link led out of the folder; nothing was followed.
    void leftBy(const QString &address);

private:
    class Guard;
    class Page;

    QString folder_; // ends with a slash, links resolved
    // In this order, since a page must go before its profile and a view before its page.
    std::unique_ptr<Guard> guard_;
    std::unique_ptr<QWebEngineProfile> profile_;
    std::unique_ptr<Page> page_;
    std::unique_ptr<QWebEngineView> view_;
};

} // namespace browser
