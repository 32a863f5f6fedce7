// The editing engine's header. It is written with Qt's short keywords, which this program switches off.
#pragma once

#include <QtCore/qtmetamacros.h>

#define signals Q_SIGNALS
#define slots Q_SLOTS
#include <Qsci/qsciscintillabase.h>
#undef signals
#undef slots
