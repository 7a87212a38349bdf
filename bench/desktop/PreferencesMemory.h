#pragma once

#include <QString>

#include "Contender.h"
#include "desktop/session/Desktop.h"

namespace kestrelbay::bench {

/// Opens the preferences of the running instance over the session bus and closes them, and prints
/// its private memory before, while they are open, and a minute after. Takes that minute. Throws
/// std::runtime_error when they do not come up or do not go.
void measurePreferencesMemory(desktop::Desktop &desktop, Contender &kestrelbay,
                              const QString &program);

}  // namespace kestrelbay::bench
