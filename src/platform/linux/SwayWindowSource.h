#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <QString>

#include "platform/linux/WindowSource.h"
#include "platform/linux/glib/LoopReader.h"
#include "platform/linux/wayland/sway/windows/SwayDesktop.h"

namespace kestrelbay::sway {

/// The windows of a sway, Xwayland's among them.
class SwayWindowSource final : public WindowSource {
public:
    explicit SwayWindowSource(const QString &socketPath);

    void start(Surroundings surroundings) override;
    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> runningApplications(
        Index index) override;
    void askAhead() override { desktop_->askAhead(); }
    void lookAhead() override;
    /// None: sway gives new windows the focus.
    [[nodiscard]] std::uint32_t time() override { return 0; }
    [[nodiscard]] std::unique_ptr<Opening> opening(const QString &entryPath, Index index) override;
    [[nodiscard]] std::vector<std::pair<QString, QString>> report(Index index) override;

private:
    class OpeningWindow;

    [[nodiscard]] SwayPicture look(Index index);
    void takeIn(const SwayPicture &picture);
    void takeInEvents();

    const std::shared_ptr<SwayDesktop> desktop_;
    std::optional<Surroundings> surroundings_;
    std::optional<LoopReader> events_;
};

}  // namespace kestrelbay::sway
