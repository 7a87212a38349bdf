#pragma once

#include "fakes/FakeApplicationCatalog.h"
#include "fakes/FakeEventTap.h"
#include "fakes/FakeSystemLog.h"
#include "fakes/FakeSystemSounds.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"
#include "platform/Platform.h"

namespace kestrelbay {

/// All fakes in one hand.
class FakePlatform final : public Platform {
public:
    [[nodiscard]] FakeEventTap &eventTap() override { return eventTap_; }
    [[nodiscard]] FakeWorkspace &workspace() override { return workspace_; }
    [[nodiscard]] FakeApplicationCatalog &applicationCatalog() override { return catalog_; }
    [[nodiscard]] FakeUserDefaults &userDefaults() override { return defaults_; }
    [[nodiscard]] FakeSystemSounds &systemSounds() override { return sounds_; }
    [[nodiscard]] FakeSystemLog &systemLog() override { return log_; }
    [[nodiscard]] QString applicationSupportDirectory() const override { return supportDirectory_; }
    [[nodiscard]] QString startupProblem() const override { return startupProblem_; }

    // For the test:
    void setApplicationSupportDirectory(const QString &path) { supportDirectory_ = path; }
    void setStartupProblem(const QString &problem) { startupProblem_ = problem; }

private:
    FakeEventTap eventTap_;
    FakeWorkspace workspace_;
    FakeApplicationCatalog catalog_;
    FakeUserDefaults defaults_;
    FakeSystemSounds sounds_;
    FakeSystemLog log_;
    QString supportDirectory_;
    QString startupProblem_;
};

}  // namespace kestrelbay
