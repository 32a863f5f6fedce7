// One page of the preview: it can pop nothing up, go nowhere but to other previewed files, and gets no
// permission for anything.
#pragma once

#include <QWebEnginePage>

namespace browser {

class PreviewPage : public QWebEnginePage
{
    Q_OBJECT

public:
    explicit PreviewPage(QWebEngineProfile *profile);

    // While silent (as it is from the start) scripts' dialogs answer themselves and their errors are lost.
    void setSilent(bool silent) { silent_ = silent; }
    bool isSilent() const { return silent_; }

    // The program itself leaves the page: a page that asks to be kept open is not kept.
    void aboutToLeave() { leaving_ = true; }

protected:
    QStringList chooseFiles(FileSelectionMode mode, const QStringList &oldFiles,
                            const QStringList &acceptedMimeTypes) override;
    void javaScriptAlert(const QUrl &origin, const QString &text) override;
    bool javaScriptConfirm(const QUrl &origin, const QString &text) override;
    bool javaScriptPrompt(const QUrl &origin, const QString &text, const QString &proposed,
                          QString *result) override;
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString &message, int line,
                                  const QString &source) override;
    bool acceptNavigationRequest(const QUrl &url, NavigationType type, bool isMainFrame) override;

private:
    void applySettings();
    void refuseRequests();

    bool silent_ = true;
    bool leaving_ = false;
};

} // namespace browser
