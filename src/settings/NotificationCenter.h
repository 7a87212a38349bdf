#pragma once

#include <functional>
#include <memory>

#include <QLatin1StringView>

class QObject;

namespace kestrelbay {

namespace notifications {

/// The system now lets the program see keys.
inline constexpr QLatin1StringView kAccessibilityGranted{"accessibilityGranted"};
/// A wish: show the preferences at the row of that permission.
inline constexpr QLatin1StringView kOpenPreferencesToAccessibility{
    "openPreferencesToAccessibility"};
/// Texts now come out in the chosen language, which may be the one from before.
inline constexpr QLatin1StringView kLanguageDidChange{"languageDidChange"};
/// Other programs hold other hotkeys of the rules than before.
inline constexpr QLatin1StringView kRefusedHotkeysDidChange{"refusedHotkeysDidChange"};

}  // namespace notifications

/// News by name, for those who do not know each other. Main thread. Whoever is
/// called may post, observe, stop, and destroy anything, the centre included.
class NotificationCenter {
public:
    NotificationCenter();
    ~NotificationCenter();
    NotificationCenter(const NotificationCenter &) = delete;
    NotificationCenter &operator=(const NotificationCenter &) = delete;

    /// The one of the running program.
    static NotificationCenter &defaultCenter();

    /// Calls the observers of that name before it returns, in the order in which
    /// they came; not those that come meanwhile.
    void post(QLatin1StringView name);

    /// Calls the function at every such post, until the context is destroyed.
    void observe(QLatin1StringView name, QObject *context, std::function<void()> function);

    /// Ends everything that observes the name for this context, at once.
    void stopObserving(QLatin1StringView name, const QObject *context);

private:
    struct Observer;
    class Observers;
    // Shared with the contexts, which tell of their end, and with posts under way.
    std::shared_ptr<Observers> observers_;
};

}  // namespace kestrelbay
