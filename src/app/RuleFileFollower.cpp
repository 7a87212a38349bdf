#include "app/RuleFileFollower.h"

#include <chrono>
#include <utility>

#include "model/RuleFile.h"

namespace kestrelbay {

namespace {

// Some programs empty or remove a file and then write it. What is not done by now is a mistake
// of somebody who wants to hear of it.
constexpr std::chrono::seconds kPatience{1};

}  // namespace

RuleFileFollower::RuleFileFollower(ShortcutManager &manager, Timers &timers,
                                   std::function<bool()> isBusy)
    : manager_(manager),
      timers_(timers),
      isBusy_(std::move(isBusy)),
      watch_(RuleFile::pathIn(manager.storageDirectory()), [this] { lookAgain(); }) {
    // It may have changed between its loading and now.
    lookAgain();
}

void RuleFileFollower::lookAgain() {
    if (isBusy_())
        return;
    if (manager_.takeInRuleFile() == ShortcutManager::RuleFileNews::Unusable)
        doubt_ = timers_.once(kPatience, [this] { manager_.tellRuleFileProblem(); });
}

}  // namespace kestrelbay
