#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

#include "platform/linux/applications/entries/ApplicationIndex.h"
#include "platform/linux/applications/matching/ApplicationMatch.h"
#include "platform/linux/x11/connection/WindowSystem.h"
#include "platform/linux/x11/windows/FocusOrder.h"
#include "platform/linux/x11/windows/RootReader.h"
#include "platform/linux/x11/windows/UseOrder.h"
#include "platform/linux/x11/windows/WindowFactsReader.h"
#include "platform/linux/x11/windows/WindowStates.h"

namespace kestrelbay::x11 {

struct ManagedWindow {
    WindowAddress address;
    std::shared_ptr<const WindowFacts> facts;
    std::shared_ptr<const std::vector<ApplicationMatch>> matches;
    /// It has the focus of its screen.
    bool active = false;
    /// Where readStates() has asked for it before.
    std::optional<WindowState> state;
};

/// The desktop at one moment.
struct DesktopPicture {
    std::chrono::steady_clock::time_point when = std::chrono::steady_clock::now();
    xcb_timestamp_t serverTime = XCB_CURRENT_TIME;
    std::shared_ptr<const ApplicationIndex> index;
    /// Front-most first, that is last used first, screen by screen.
    std::vector<ManagedWindow> windows;
};

/// Reads the windows that the window manager manages.
///
/// The order of windows is that in which they were active, as far as pictures have shown it.
/// Which there are and the active one, what identifies a window, and the state of one whose state
/// was asked for, is asked once and forgotten when the server tells of a change. The server tells
/// before it answers any later question, and each picture asks one, so none shows what had changed
/// by the time it was asked for.
///
/// Any thread; no lock is held while the server is waited for.
class WindowTracker {
public:
    WindowTracker(const QString &displayName, WindowFactsReader::AddLaunch addLaunch);

    [[nodiscard]] const WindowSystem &windowSystem() const { return system_; }

    /// One round trip when every window is known already, otherwise two. No
    /// windows without a server or a window manager that keeps EWMH's lists.
    [[nodiscard]] DesktopPicture read(std::shared_ptr<const ApplicationIndex> index);
    /// Asks what the next readAsked() answers, without waiting for it.
    void askAhead();
    /// The desktop as it was at askAhead(), if that was called since the last time, and not so long
    /// ago that nobody would call it the same moment; otherwise read().
    [[nodiscard]] DesktopPicture readAsked(std::shared_ptr<const ApplicationIndex> index);

    /// Of windows that pictures have shown, in order, in one round trip. From now on pictures
    /// have their states without another one.
    [[nodiscard]] std::vector<WindowState> readStates(std::span<const WindowAddress> windows);

    /// Windows of one screen have been asked to come back, one after the other; in pictures the
    /// last of them comes first from now on.
    void expectActive(std::span<const WindowAddress> windows);

    /// Asks for the focus of this window. In pictures it comes first from now on, though those
    /// on the way, which have been asked to come back before, may have the focus before it.
    bool giveFocus(const WindowAddress &window, xcb_timestamp_t time, FocusOrder::Others others);
    /// The window is about to lose the focus, because it has been asked to go.
    void takeFocusFrom(const WindowAddress &window) { focusOrder_.take(window); }
    /// Has what was asked of the focus last not come about yet, as of the last picture? A window
    /// manager that refuses is waited for 400 ms.
    [[nodiscard]] bool isFocusAwaited() const { return focusOrder_.isAwaited(); }
    /// Asks once more for the focus that was asked for last, if the window manager did not listen
    /// by the last picture, and for windows that were to come back before. mutter does not when it
    /// has moved the focus itself since the time of the press, as it does several times for a new
    /// window, or when the first one to come back tells that it is used. Was it necessary?
    bool repeatUnheardFocus(xcb_timestamp_t time);
    /// May that be necessary, once there is a new picture?
    [[nodiscard]] bool mayFocusBeUnheard() const { return focusOrder_.mayBeUnheard(); }

    /// The server's clock, after one round trip.
    [[nodiscard]] xcb_timestamp_t serverTime();

    /// Takes in what the server has sent. How many events were that?
    std::size_t processEvents();

    /// Called when the focus has been asked for, on the thread that asks. To be set before
    /// there is a second thread, and cleared by an empty one.
    void setFocusAsked(std::function<void()> focusAsked);

private:
    struct Record {
        /// Absent while it is being read.
        std::shared_ptr<const WindowFacts> facts;
        std::shared_ptr<const std::vector<ApplicationMatch>> matches;
        /// What the matches were made with.
        std::shared_ptr<const ApplicationIndex> index;
        std::uint64_t reading = 0;
    };
    using Known = std::unordered_map<xcb_window_t, Record>;
    /// What the first round trip of a picture brings.
    struct Questions {
        std::chrono::steady_clock::time_point when;
        /// Where that is known, in place of the questions.
        std::shared_ptr<const std::vector<Root>> knownRoots;
        std::shared_ptr<const std::vector<Root>> knownManagers;
        std::vector<RootReader::Question> roots;
        std::uint64_t rootChanges = 0;
        /// Its answer comes after all that had changed before.
        xcb_get_input_focus_cookie_t last{};
        WindowStates::Asking states;
        std::vector<WindowSystem::StateQuestion> stateQuestions;
    };

    [[nodiscard]] Questions ask();
    [[nodiscard]] DesktopPicture answer(const Questions &questions,
                                        std::shared_ptr<const ApplicationIndex> index);
    void discard(const Questions &questions) const;
    [[nodiscard]] std::vector<Root> takeRoots(const Questions &questions);
    [[nodiscard]] std::vector<Root> keepRoots(std::vector<Root> roots, std::uint64_t rootChanges);
    [[nodiscard]] Known collect(std::span<const xcb_window_t> windows, std::vector<Root> &roots);
    /// Asks windows to come back that have been asked before the last focus, and have not.
    bool restoreLeftBehind(xcb_timestamp_t time);
    void verifyWindowManagers(std::span<Root *const> unverified);
    void putInOrderOfUse(Root &root, const Known &known);

    // With the lock held.
    std::size_t takeEvents();
    std::size_t takeQueuedEvents();
    void apply(const xcb_generic_event_t &event);

    WindowSystem system_;
    FocusOrder focusOrder_;
    RootReader rootReader_;
    WindowFactsReader reader_;

    std::mutex mutex_;
    Known records_;
    WindowStates states_;
    /// Null when something of it has changed.
    std::shared_ptr<const std::vector<Root>> knownRoots_;
    /// The same, but good as long as the window managers are.
    std::shared_ptr<const std::vector<Root>> knownManagers_;
    std::uint64_t rootChanges_ = 0;
    std::optional<Questions> askedAhead_;
    struct Used {
        UseOrder order;
        /// The number of the request that told of it.
        std::uint32_t request = 0;
    };
    std::unordered_map<xcb_window_t, Used> usedByRoot_;
    /// The windows by which window managers show that they live; have they been
    /// seen to?
    std::unordered_map<xcb_window_t, bool> verified_;
    xcb_timestamp_t time_ = XCB_CURRENT_TIME;
    std::uint64_t readings_ = 0;

    std::mutex focusAskedMutex_;
    std::function<void()> focusAsked_;
};

}  // namespace kestrelbay::x11
