#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <QString>

#include "platform/linux/WindowSource.h"
#include "platform/linux/wayland/windows/Desktop.h"
#include "platform/linux/wayland/windows/WindowMatches.h"

namespace kestrelbay::wayland {

/// The windows of a compositor, Xwayland's among them.
class WaylandWindowSource final : public WindowSource {
public:
    explicit WaylandWindowSource(std::shared_ptr<Desktop> desktop);

    void start(Surroundings surroundings) override;
    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> runningApplications(
        Index index) override;
    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> inactiveApplications(
        const Index &index) override;
    void askAhead() override { desktop_->askAhead(); }
    void lookAhead() override;
    /// None: a compositor has no time of its own to go by.
    [[nodiscard]] std::uint32_t time() override { return 0; }
    [[nodiscard]] std::unique_ptr<Opening> opening(const QString &entryPath, Index index) override;
    [[nodiscard]] std::vector<std::pair<QString, QString>> report(Index index) override;

private:
    class OpeningWindow;

    [[nodiscard]] std::vector<std::unique_ptr<RunningApplication>> applicationsOf(
        const Picture &picture) const;
    [[nodiscard]] Picture look(Index index);
    void takeIn(const Picture &picture);

    const std::shared_ptr<Desktop> desktop_;
    std::optional<Surroundings> surroundings_;
    WindowMatches matches_;
};

}  // namespace kestrelbay::wayland
