#pragma once

namespace dom {

// What a node consists of besides its children.
enum class Piece
{
    Lead, // the layout before it: blanks that are no node
    Head, // element: the start tag; leaf: all of it
    Tail, // element: the layout before its end tag
    End, // element: the end tag; empty for <a/>
};

} // namespace dom
