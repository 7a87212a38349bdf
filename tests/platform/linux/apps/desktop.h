#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

#include "platform/SystemLog.h"
#include "platform/linux/LinuxWorkspace.h"
#include "platform/linux/x11/connection/XConnection.h"
#include "support/PrivateXServer.h"
#include "support/bus/PrivateSessionBus.h"

namespace kestrelbay::testing {

/// That of an X server.
[[nodiscard]] std::unique_ptr<LinuxWorkspace> makeWorkspaceOfX(
    const QString &displayName, SystemLog &log,
    std::chrono::milliseconds openingTakes = LinuxWorkspace::kOpeningTakes);

struct NullLog : SystemLog {
    void write(const QString &) override {}
};

/// The folders of a user of our own, set in the environment before anything reads
/// it, and a session bus for him.
class PrivateHome {
public:
    PrivateHome();
    ~PrivateHome();

    static PrivateHome &instance();

    [[nodiscard]] QString path(const QString &relative) const { return root_.filePath(relative); }
    /// A file below the home; its folders are made.
    QString write(const QString &relative, const QByteArray &content) const;
    /// An entry in the user's application folder. Without "Exec=" in it, the lines
    /// start the test program with these arguments.
    QString writeEntry(const QString &name, const QByteArray &lines) const;
    void removeEntries() const;
    /// From now on, only these programs of the system are found in PATH.
    void offerPrograms(const QStringList &names) const;
    void offerAllPrograms() const { qputenv("PATH", searchPath_); }

private:
    const QByteArray searchPath_ = qgetenv("PATH");
    QTemporaryDir root_;
    std::unique_ptr<PrivateSessionBus> bus_;
};

[[nodiscard]] QByteArray clientProgram();

struct WindowOptions {
    const char *instance = nullptr;
    const char *className = nullptr;
    const char *type = nullptr;
    xcb_window_t transientFor = 0;
    xcb_window_t groupLeader = 0;
    /// Only there to be named by others.
    bool unmapped = false;
    bool skipsTaskbar = false;
};

/// Makes windows of our own, and sees what became of them.
class WindowMaker {
public:
    explicit WindowMaker(const QString &displayName);

    /// Made and, usually, mapped; the window manager may not have it yet.
    xcb_window_t make(const WindowOptions &options);
    void setText(xcb_window_t window, const char *property, const QByteArray &text);
    void setRaw(xcb_window_t window, const char *property, const char *type, int format,
                const QByteArray &bytes);
    void destroy(xcb_window_t window);
    /// Asks for the focus as a pager would.
    void activate(xcb_window_t window, xcb_timestamp_t time = XCB_CURRENT_TIME);
    void moveToWorkspace(xcb_window_t window, std::uint32_t workspace);

    [[nodiscard]] std::vector<std::uint32_t> words(xcb_window_t window, const char *property);
    [[nodiscard]] xcb_window_t active();
    /// Has the window manager got them all?
    [[nodiscard]] bool managed(const std::vector<xcb_window_t> &windows);
    [[nodiscard]] bool isIconic(xcb_window_t window);
    /// Neither minimised nor kept unmapped by other means.
    [[nodiscard]] bool isInView(xcb_window_t window);
    [[nodiscard]] xcb_atom_t atom(const char *name);

    /// From now on, hear what is said to the window manager.
    void listen();
    struct Message {
        xcb_window_t window;
        xcb_atom_t type;
        std::array<std::uint32_t, 5> data;
    };
    [[nodiscard]] std::vector<Message> heard();

    [[nodiscard]] const x11::XConnection &connection() const { return connection_; }
    void sync();

private:
    void tellWindowManager(xcb_window_t window, const char *message,
                           std::initializer_list<std::uint32_t> words);

    x11::XConnection connection_;
};

/// A server, a window manager, and a workspace looking at them.
class AppsDesktop : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;

    void startWindowManager(const QString &program = QStringLiteral("openbox"));
    void startWorkspace();
    [[nodiscard]] LinuxWorkspace &workspace() { return *workspace_; }

    using Application = std::unique_ptr<RunningApplication>;
    /// The first running application of this entry.
    [[nodiscard]] Application running(const QString &entryPath);
    [[nodiscard]] Application waitForRunning(const QString &entryPath, std::size_t windows = 1);
    [[nodiscard]] bool becomesActive(const QString &entryPath);

    NullLog log_;
    std::unique_ptr<PrivateXServer> server_;
    std::unique_ptr<ChildProcess> windowManager_;
    std::unique_ptr<WindowMaker> maker_;
    std::unique_ptr<LinuxWorkspace> workspace_;
};

}  // namespace kestrelbay::testing
