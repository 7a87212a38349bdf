#include "desktop/sway/SwayStage.h"

namespace kestrelbay::desktop {

namespace {

/// sway takes the keys' names, and a line of a shell.
constexpr const char *kConfiguration = "bindsym Mod4+t exec echo pressed >>\"$HOME/users-key\"\n";

}  // namespace

SwayStage::SwayStage(StageOptions options)
    : WaylandStage(std::move(options), kCastOnWayland), session_(kConfiguration), view_(session_) {
    furnish();
}

SwayStage::~SwayStage() {
    dropProgram();
}

int SwayStage::usersPresses() {
    return static_cast<int>(
        HomeFolder::read(session_.home().path(QStringLiteral("users-key"))).count('\n'));
}

}  // namespace kestrelbay::desktop
