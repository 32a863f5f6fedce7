// A document with one node of it in the Node Properties dialog, as the user sees it.
#pragma once

#include "platform/control/code_editor.h"
#include "platform/dialogs/scripted_dialogs.h"
#include "tree/attpropfrm.h"
#include "tree/attribute_list.h"
#include "tree/propfrm.h"
#include "tree/tree_model.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <memory>
#include <utility>

namespace tree_test {

using namespace tree;

inline QString q(const char *text) { return QString::fromUtf8(text); }

class Desk
{
public:
    // The node at a path of rows from the root of the tree: "1/0"; "" is the root itself.
    explicit Desk(const QByteArray &text, const char *path = "")
    {
        if (document.load(text))
            return;
        model.nametree(document.documentElement());
        node = model.index(0, 0);
        for (const QString &step : q(path).split(u'/', Qt::SkipEmptyParts))
            node = model.index(step.toInt(), 0, node);
        form = std::make_unique<Propfrm>(services, document, model, node);
        form->show();
        opened = QTest::qWaitForWindowActive(form.get());
    }

    template <typename T>
    T *find(const char *name) const
    {
        return form->findChild<T *>(q(name));
    }

    attpropfrm *attribute() const { return form->findChild<attpropfrm *>(); }
    AttributeList *list() const { return find<AttributeList>("ListView1"); }
    control::CodeEditor *box(const char *name) const { return find<control::CodeEditor>(name); }
    QLineEdit *line(const char *name) const { return find<QLineEdit>(name); }
    void press(const char *button) const { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }
    void select(int row) const { list()->setCurrentItem(list()->topLevelItem(row)); }
    QString label() const { return node.data(TreeModel::LabelRole).toString(); }

    // The window system that the tests run on gives no window the focus by itself.
    static void turnTo(QWidget *window)
    {
        window->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), window);
    }

    // The Attribute dialog, opened by a button, filled and answered.
    void attributeBy(const char *button, const char *name, const char *value) const
    {
        press(button);
        turnTo(attribute());
        line("txtname")->setText(q(name));
        line("txtvalue")->setText(q(value));
        press("cmdOK");
        if (!attribute()->isVisible())
            turnTo(form.get());
    }

    // Acts parted by " | ": "select" and a row of the list; a field or a box and what goes into it; else a
    // button, with the name and the value that the Attribute dialog is to be given.
    void act(const char *acts) const
    {
        for (const QString &act : q(acts).split(q(" | "), Qt::SkipEmptyParts)) {
            const QByteArray name = act.section(u' ', 0, 0).toUtf8();
            const QByteArray rest = act.section(u' ', 1).toUtf8();
            if (name == "select")
                select(rest.toInt());
            else if (box(name) != nullptr)
                box(name)->replaceText(rest);
            else if (line(name) != nullptr)
                line(name)->setText(q(rest));
            else if (rest.isEmpty())
                press(name);
            else
                attributeBy(name, act.section(u' ', 1, 1).toUtf8(), act.section(u' ', 2).toUtf8());
        }
    }

    dom::Document document;
    TreeModel model{document};
    dialogs::ScriptedDialogs dialogs;
    PropertyServices services{dialogs, {}, [this](int target, QWidget *parent) {
                                  askedFor = {target, parent};
                              }};
    QPersistentModelIndex node;
    std::unique_ptr<Propfrm> form;
    std::pair<int, QWidget *> askedFor{-1, nullptr};
    bool opened = false;
};

} // namespace tree_test
