// A piece of markup: nothing, a range of a source, or bytes of its own.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <utility>

namespace dom {

// Byte offsets into a source; sources are below 2 GiB.
struct Span
{
    quint32 begin = 0;
    quint32 end = 0;

    quint32 size() const { return end - begin; }
};

// Ranges point into a source, which outlives every node of its document.
class Text
{
public:
    Text() = default;
    Text(QByteArray own) : own_(std::move(own)), view_(own_) { }
    static Text range(QByteArrayView view)
    {
        Text text;
        text.view_ = view;
        return text;
    }

    QByteArrayView view() const { return view_; }
    bool isEmpty() const { return view_.isEmpty(); }

private:
    QByteArray own_; // empty for a range; shared data never moves, so the view stays good in copies
    QByteArrayView view_;
};

} // namespace dom
