#pragma once

#include <functional>
#include <optional>

#include <QJsonObject>
#include <QJsonValue>
#include <QRect>
#include <QSize>
#include <QString>
#include <QStringList>

#include "desktop/display/Pointer.h"
#include "desktop/display/ToastWatch.h"
#include "desktop/session/StatusNotifiers.h"
#include "desktop/stage/Stage.h"

namespace kestrelbay::desktop {

/// The stage for KestrelBay's own windows, its toasts and its icon in the tray: a
/// mouse, the files of its settings, and its further starts are added.
class ShellStage : public Stage {
public:
    static constexpr QSize kGuideSize{468, 468};
    static constexpr QSize kAboutSize{340, 200};
    static constexpr QSize kPreferencesSize{704, 598};

    /// Does another instance have them?
    enum class Keys { AreFree, AreTaken };

    explicit ShellStage(StageOptions options);

    [[nodiscard]] Pointer &pointer() { return pointer_; }
    [[nodiscard]] ToastWatch &toasts() { return toasts_; }
    [[nodiscard]] StatusNotifiers &notifiers() { return notifiers_; }

    [[nodiscard]] QString busAddress();
    /// As it calls itself on the X server.
    [[nodiscard]] QString windowManagerName();
    /// Keeps the text beside the screenshots.
    void keepText(const QString &name, const QString &text) const;

    /// Ends KestrelBay if it runs, and starts it with the rules and these settings, the
    /// guide done with unless they say otherwise. Returns when it has the keys, if it can have
    /// them.
    void restartProgram(const QJsonObject &settings, Keys keys = Keys::AreFree);
    /// Has the running instance do something; throws NotPrepared when it does not.
    void askFor(const QString &action);

    /// What KestrelBay has kept; undefined when it has not.
    [[nodiscard]] QJsonValue setting(const QString &key);
    /// The shown window of KestrelBay of that size, without its frame.
    [[nodiscard]] std::optional<Window> programWindow(const QSize &size);
    /// The shown window of KestrelBay with that title.
    [[nodiscard]] std::optional<Window> windowTitled(const QString &title);
    /// Waits until it is there and has the keyboard; throws NotPrepared.
    Window waitForWindow(const QString &title);
    /// Waits until something is shown in this part of the window, at rest and with nothing but
    /// ground at the part's right edge; throws NotPrepared. In device pixels from the window's
    /// upper left corner.
    void waitForContents(Window window, const QRect &part);
    /// Is it there and does it have the keyboard?
    [[nodiscard]] bool isInFront(const QSize &size);
    using Stage::isInFront;
    /// Does the plain program have its place and the keyboard?
    [[nodiscard]] bool isFrontProgramInFront();
    /// How far the middle of its shown window of that size, frame included, is from that of
    /// the screen.
    [[nodiscard]] QPoint offMiddle(const QSize &size);
    /// KestrelBay's windows, as "468×468, 340×200".
    [[nodiscard]] QString windowsInWords();
    /// The menu that is open, which no toast is; none when there is none.
    [[nodiscard]] std::optional<QRect> openMenu();
    /// Does what opens a menu, and waits until it is painted; throws NotPrepared.
    QRect waitForMenu(const std::function<void()> &act);
    void closeMenu();
    /// Closes it as its close button does, and waits until it is gone.
    void closeWindow(const QSize &size);
    /// A click into it, measured from its upper left corner.
    void clickIn(Window window, const QPoint &place);
    void pressKey(std::uint8_t keycode) { press({QString(), {keycode}}); }

private:
    /// Does an instance of KestrelBay see them?
    [[nodiscard]] bool hasKeys();

    Pointer pointer_;
    ToastWatch toasts_;
    StatusNotifiers notifiers_;
};

/// Keys as X numbers them.
namespace shellkeys {
inline constexpr std::uint8_t kTab = 23, kReturn = 36, kUp = 111, kDown = 116, kDelete = 22;
}

}  // namespace kestrelbay::desktop
