// Stands in for the system's clipboard, without a window system.
#pragma once

#include "tree/clipboard.h"

#include <optional>

namespace tree_test {

class PlainClipboard : public tree::Clipboard
{
public:
    using Form = tree::Clip::Form;

    void put(const tree::CopiedNode &node) override
    {
        put_ = node;
        hold(Form::Node, QString::fromUtf8(node.asElement()));
    }
    bool holdsWhatWasPut() const override { return put_.has_value(); }
    bool holdsText() const override { return !held_.text.isEmpty(); }
    platform::Result<tree::Clip> read() const override
    {
        if (!holdsText())
            return platform::Failure{QStringLiteral("empty")};
        return held_;
    }

    // As another program or window does.
    void set(Form form, const QString &text)
    {
        put_.reset();
        hold(form, text);
    }
    // What was put, passed on to another program, which asks for one of its forms and offers that.
    void passOn(Form form)
    {
        const tree::CopiedNode node = *put_;
        set(form, QString::fromUtf8(form == Form::Node ? node.asElement() : node.asText()));
    }

private:
    void hold(Form form, const QString &text) { held_ = {form, text}; }

    std::optional<tree::CopiedNode> put_;
    tree::Clip held_;
};

} // namespace tree_test
