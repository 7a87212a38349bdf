#include "desktop/kwin/KWinStage.h"

namespace kestrelbay::desktop {

KWinStage::KWinStage(StageOptions options, const KWinSetup &setup)
    : WaylandStage(std::move(options), kCastUnderKWin), session_(setup), view_(session_) {
    furnish();
}

KWinStage::~KWinStage() {
    dropProgram();
}

int KWinStage::usersPresses() {
    return static_cast<int>(
        HomeFolder::read(session_.home().path(QLatin1String(KWinSession::kUsersKeyFile)))
            .count('\n'));
}

}  // namespace kestrelbay::desktop
