#pragma once

#include <functional>
#include <memory>

#include <QObject>

#include "settings/Addresses.h"

class QWidget;

namespace kestrelbay {

class FixedWindow;
class NativeWindow;
class Notifications;
class Workspace;

/// The About window. It is built when it is first shown, and then kept. Its texts follow
/// the language. Main thread.
class AboutWindowController final : public QObject {
    Q_OBJECT

public:
    /// All of it has to outlive this.
    struct Services {
        Workspace &workspace;
        NativeWindow &nativeWindow;
        Notifications &notifications;
        Addresses addresses;
        /// A notice that outlives the window.
        std::function<void(const QString &)> showToast;
    };

    explicit AboutWindowController(Services services);
    ~AboutWindowController() override;

    /// In the middle of the screen and before all other windows, those of other
    /// programs included.
    void show();

    /// Null before it is first shown.
    [[nodiscard]] QWidget *window() const;

private:
    void build();

    Services services_;
    std::unique_ptr<FixedWindow> window_;
};

}  // namespace kestrelbay
