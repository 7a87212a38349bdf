#include "fakes/FakeEventTap.h"
#include "fakes/FakeUserDefaults.h"
#include "fakes/FakeWorkspace.h"
#include "platform/EventTapContract.h"
#include "platform/UserDefaultsContract.h"
#include "platform/WorkspaceContract.h"

namespace kestrelbay::testing {
namespace {

class FakeKeyboard {
public:
    EventTap &tap() { return tap_; }
    void hold(KeyCode code) { count(code, tap_.press(code)); }
    void holdLong(KeyCode code) {
        hold(code);
        count(code, tap_.repeat(code));
        count(code, tap_.repeat(code));
    }
    int seenInFront(KeyCode code) const { return static_cast<int>(seen_.count(code)); }
    void letGo(KeyCode code) {
        if (isModifierKeyCode(code))
            tap_.release(code);
    }
    void settle() {}
    void setHeldByOthers(const Hotkey &hotkey, bool held) {
        tap_.setHeldByOthers(held ? std::set{hotkey} : std::set<Hotkey>{});
    }
    void setKeyboardHeldByOthers(bool held) { tap_.setKeyboardHeldByOthers(held); }
    void takeTapAway() { tap_.takeAway(); }
    void withholdKeys(bool withhold) { tap_.setKeysWithheld(withhold); }

private:
    void count(KeyCode code, std::optional<EventVerdict> verdict) {
        if (verdict != EventVerdict::Swallow)
            seen_.insert(code);
    }

    std::multiset<KeyCode> seen_;
    FakeEventTap tap_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, EventTapContract, FakeKeyboard);

class FakeStore {
public:
    UserDefaults &defaults() { return defaults_; }

private:
    FakeUserDefaults defaults_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, UserDefaultsContract, FakeStore);

class FakeDesktop final : public WorkspaceStage {
public:
    // With an application installed, the fake knows what is not.
    FakeDesktop() { workspace_.install(QStringLiteral("/Applications/Other")); }

    Workspace &workspace() override { return workspace_; }
    QString install(const QString &name) override {
        QString path = QStringLiteral("/Applications/") + name;
        workspace_.install(path);
        return path;
    }
    void start(const QString &path, int windows) override {
        EXPECT_TRUE(workspace_.open(QUrl::fromLocalFile(path)));
        for (int i = 1; i < windows; ++i)
            workspace_.newest().addWindow(QString::number(i));
    }
    void quit(const QString &path) override { workspace_.quit(path); }
    bool eventually(const std::function<bool()> &condition) override { return condition(); }

private:
    FakeWorkspace workspace_;
};

INSTANTIATE_TEST_SUITE_P(Fake, WorkspaceContract, ::testing::Values([] {
                             return std::unique_ptr<WorkspaceStage>(
                                 std::make_unique<FakeDesktop>());
                         }));

}  // namespace
}  // namespace kestrelbay::testing
