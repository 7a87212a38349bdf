#pragma once

#include <memory>

class QWidget;

namespace kestrelbay {

class FixedWindow;
class NativeWindow;
class Workspace;

/// The About window. It is built when it is first shown, with the texts of that
/// moment, and then kept. Main thread.
class AboutWindowController {
public:
    /// All of it has to outlive this.
    struct Services {
        Workspace &workspace;
        NativeWindow &nativeWindow;
    };

    explicit AboutWindowController(Services services);
    ~AboutWindowController();

    /// In the middle of the screen and before all other windows, those of other
    /// programs included.
    void show();

    /// Null before it is first shown.
    [[nodiscard]] QWidget *window() const;

private:
    Services services_;
    std::unique_ptr<FixedWindow> window_;
};

}  // namespace kestrelbay
