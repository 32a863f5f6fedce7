// File dialog filters: the program writes "Name|*.a;*.b|Name|*.c", Qt reads a list of "Name (*.a *.b)".
#pragma once

#include <QString>
#include <QStringList>

namespace dialogs {

// The filter for Qt. "*.*" stands for every file, also for one without an ending; a pattern list that the
// name repeats in brackets is not shown twice. A name without patterns is left out.
QStringList nameFilters(const QString &filter);

// The ending that a name typed without one gets under one of Qt's name filters; empty under "all files".
QString defaultEnding(const QString &nameFilter);

// The first of Qt's name filters that shows a file of this name, one of all files only where no other does;
// empty when none does.
QString filterFor(const QString &name, const QStringList &nameFilters);

} // namespace dialogs
