// Shows how far the opening of the whole tree has come, once that takes longer, and lets the user cancel it.
#pragma once

#include "tree/opening.h"

class QAbstractItemModel;
class QWidget;

namespace tree {

enum class Opened
{
    All,
    Cancelled, // by the user, or because the window went
    AtBound, // more rows than are worth their memory
    Overtaken // rows came or went meanwhile
};

// Runs it as far as it goes. What has been reached is open then, but for Overtaken. total counts rows. Until
// the window shows no event is handled; after that it keeps the user out of all others.
Opened runWithProgress(Opening &opening, qint64 total, const QAbstractItemModel &model, QWidget *parent);

} // namespace tree
