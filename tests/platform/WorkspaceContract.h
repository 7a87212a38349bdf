#pragma once

#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include <QString>

#include "platform/Workspace.h"

namespace kestrelbay::testing {

/// A desktop on which the contract of Workspace can be tried: a real one, or the
/// recording fake.
class WorkspaceStage {
public:
    virtual ~WorkspaceStage() = default;

    [[nodiscard]] virtual Workspace &workspace() = 0;
    /// Path of an installed application that opens one ordinary window whenever it is
    /// launched, and comes to the front. The same name gives the same application.
    [[nodiscard]] virtual QString install(const QString &name) = 0;
    /// Brings an installed application up with this many windows, in front.
    virtual void start(const QString &path, int windows) = 0;
    /// Ends it, as its user would.
    virtual void quit(const QString &path) = 0;
    /// Gives things time; false when the condition never held.
    [[nodiscard]] virtual bool eventually(const std::function<bool()> &condition) = 0;
};

using WorkspaceStageFactory = std::function<std::unique_ptr<WorkspaceStage>()>;

/// What every Workspace promises. To be instantiated with a factory for each.
class WorkspaceContract : public ::testing::TestWithParam<WorkspaceStageFactory> {
protected:
    void SetUp() override { stage_ = GetParam()(); }
    void TearDown() override { stage_.reset(); }

    [[nodiscard]] Workspace &workspace() { return stage_->workspace(); }
    /// Null when it does not run.
    [[nodiscard]] std::unique_ptr<RunningApplication> running(const QString &path);
    [[nodiscard]] bool becomesActive(const QString &path);
    [[nodiscard]] bool hasWindows(const QString &path, std::size_t count);

    std::unique_ptr<WorkspaceStage> stage_;
};

}  // namespace kestrelbay::testing
