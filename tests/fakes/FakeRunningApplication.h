#pragma once

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "fakes/FakeWindowElement.h"
#include "files/StandardPath.h"
#include "platform/RunningApplication.h"

namespace kestrelbay {

/// A process as the test sets it up.
struct FakeProcess {
    QString name{};
    QUrl bundleURL{};
    QString bundleIdentifier{};
    ProcessIdentifier processIdentifier{100};
    bool isActive = false;
    std::vector<std::shared_ptr<FakeWindow>> windows{};  ///< front-most first

    std::shared_ptr<FakeWindow> addWindow(const QString &windowName) {
        windows.push_back(std::make_shared<FakeWindow>(FakeWindow{.name = windowName}));
        return windows.back();
    }
    /// Brings the main window to the front, as an activation does.
    void raiseMainWindow() {
        const auto main = std::ranges::find_if(windows, [](const auto &w) { return w->isMain; });
        if (main == windows.end())
            return;
        (*main)->isMain = false;
        std::rotate(windows.begin(), main, std::next(main));
    }
    /// It has ended, and its windows with it.
    void quit() {
        isActive = false;
        for (const auto &window : windows)
            window->isGone = true;
        windows.clear();
    }
};

/// As the workspace spells it.
inline QUrl standardizedFile(const QUrl &file) {
    return QUrl::fromLocalFile(standardPath(file.toLocalFile()));
}

/// All that run, in the order in which they are listed.
using FakeProcesses = std::vector<std::shared_ptr<FakeProcess>>;

/// Writes requests as "hide Notes" and "activate Notes", reads as "windows Notes".
class FakeRunningApplication final : public RunningApplication {
public:
    FakeRunningApplication(std::shared_ptr<FakeProcess> process,
                           std::shared_ptr<const FakeProcesses> all,
                           std::shared_ptr<Journal> requests, std::shared_ptr<Journal> reads)
        : process_(std::move(process)),
          all_(std::move(all)),
          requests_(std::move(requests)),
          reads_(std::move(reads)),
          wasActive_(process_->isActive) {}

    [[nodiscard]] QUrl bundleURL() const override { return standardizedFile(process_->bundleURL); }
    [[nodiscard]] QString bundleIdentifier() const override { return process_->bundleIdentifier; }
    [[nodiscard]] ProcessIdentifier processIdentifier() const override {
        return process_->processIdentifier;
    }
    [[nodiscard]] bool isActive() const override { return wasActive_; }
    [[nodiscard]] std::vector<std::unique_ptr<WindowElement>> windows() const override {
        reads_->add(QStringLiteral("windows ") + process_->name);
        std::vector<std::unique_ptr<WindowElement>> elements;
        for (const auto &window : process_->windows)
            elements.push_back(std::make_unique<FakeWindowElement>(window, requests_, reads_));
        return elements;
    }
    bool hide() override {
        requests_->add(QStringLiteral("hide ") + process_->name);
        process_->isActive = false;
        return true;
    }
    bool activate() override {
        requests_->add(QStringLiteral("activate ") + process_->name);
        process_->raiseMainWindow();
        // One at a time is active, and none that has quit.
        for (const auto &process : *all_)
            process->isActive = process == process_;
        return true;
    }

private:
    std::shared_ptr<FakeProcess> process_;
    std::shared_ptr<const FakeProcesses> all_;
    std::shared_ptr<Journal> requests_;
    std::shared_ptr<Journal> reads_;
    bool wasActive_;
};

}  // namespace kestrelbay
