#pragma once

#include <QString>
#include <QStringList>

namespace kestrelbay::macos {

/// What the back end asked of the fake system, one line a call with its arguments, in
/// the order of the calls. Any thread. Calls that only read a value stand in it only
/// where a test needs to see them.
void record(const QString &call);

/// The calls so far; the journal begins anew.
[[nodiscard]] QStringList takeCalls();

/// The calls so far that were not made on the thread that runs main().
[[nodiscard]] QStringList callsOffMainThread();

}  // namespace kestrelbay::macos
