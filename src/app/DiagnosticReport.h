#pragma once

#include <QString>

namespace kestrelbay {

class Platform;
class ShortcutManager;

/// Where the rules and settings lie. Empty when there is no place for them.
[[nodiscard]] QString storageDirectory(const Platform &platform);

/// All that a report of a problem should say, as English text to be pasted: the
/// session, the tap, hotkeys that others hold, the rule file, the windows. No key
/// presses, no titles, and the home folder as "~". Without a manager, as when no instance runs, it
/// looks at the rule file and tries the tap for a moment. Main thread.
[[nodiscard]] QString diagnosticReport(Platform &platform, const ShortcutManager *manager);

}  // namespace kestrelbay
