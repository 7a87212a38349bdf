#include "platform/WorkspaceContract.h"

#include <csignal>

#include <QHash>

#include "platform/linux/apps/desktop.h"
#include "support/Poll.h"

namespace kestrelbay::testing {
namespace {

class LinuxStage : public WorkspaceStage {
public:
    LinuxStage() {
        PrivateHome::instance().removeEntries();
        manager_ = server_.startWindowManager(QStringLiteral("openbox"));
        workspace_ = makeWorkspaceOfX(server_.displayName(), log_);
    }

    [[nodiscard]] Workspace &workspace() override { return *workspace_; }

    [[nodiscard]] QString install(const QString &name) override {
        return PrivateHome::instance().writeEntry(
            name + QStringLiteral(".desktop"),
            "Exec=" + clientProgram() + " --windows=1 --class=" + name.toUtf8());
    }

    void start(const QString &path, int windows) override {
        const QString name = path.section(u'/', -1).section(u'.', 0, 0);
        clients_[path] =
            std::make_shared<ChildProcess>(QString::fromLocal8Bit(clientProgram()),
                                           QStringList{QStringLiteral("--windows=%1").arg(windows),
                                                       QStringLiteral("--class=") + name},
                                           server_.environment());
        EXPECT_TRUE(eventually([&] {
            for (const auto &application : workspace_->runningApplications())
                if (application->bundleURL() == QUrl::fromLocalFile(path))
                    return application->windows().size() == static_cast<std::size_t>(windows) &&
                           application->isActive();
            return false;
        }));
    }

    void quit(const QString &path) override { clients_.remove(path); }

    [[nodiscard]] bool eventually(const std::function<bool()> &condition) override {
        return waitUntil(condition);
    }

private:
    NullLog log_;
    PrivateXServer server_;
    std::unique_ptr<ChildProcess> manager_;
    QHash<QString, std::shared_ptr<ChildProcess>> clients_;
    std::unique_ptr<LinuxWorkspace> workspace_;
};

INSTANTIATE_TEST_SUITE_P(Linux, WorkspaceContract, ::testing::Values(WorkspaceStageFactory([] {
                             return std::make_unique<LinuxStage>();
                         })));

}  // namespace
}  // namespace kestrelbay::testing
