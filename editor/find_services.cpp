#include "editor/find_services.h"

#include "editor/find_bar.h"
#include "editor/go_to_line.h"

#include <QPointer>

namespace editor {

void bindFindServices(control::CodeEditor &editor, FindBar &bar)
{
    const QPointer<FindBar> shown(&bar);
    const auto serve = [&editor, shown](int command, auto service) {
        editor.setServiceHandler(command, [shown, service] { return shown != nullptr && service(*shown); });
    };
    const auto opened = [](FindBar &asked, bool replacing) {
        asked.open(replacing);
        return true;
    };
    serve(168, [&editor](FindBar &) {
        goToLine(editor, editor.window());
        return true;
    });
    serve(169, [opened](FindBar &asked) { return opened(asked, true); });
    serve(174, [](FindBar &asked) { return asked.find(Direction::Backwards); });
    serve(176, [](FindBar &asked) { return asked.find(Direction::Forwards); });
    serve(178, [opened](FindBar &asked) { return opened(asked, false); });
}

} // namespace editor
