#include "desktop/stage/Stage.h"

#include <algorithm>

#include "desktop/display/Typing.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {
bool isOnCommand(const RuleSpec &rule) {
    return (rule.modifierFlags & flags::kAllModifiers) == flags::kCommand;
}
}  // namespace

Stage::Stage(StageOptions options)
    : StageBase(std::move(options), kCastOnX),
      desktop_(windowManager(), StageBase::options().serverArguments),
      front_(desktop_.displayName()),
      keyboard_(desktop_.displayName()) {
    furnish();
}

Stage::~Stage() {
    dropProgram();
}

bool Stage::isGrabbed(const Key &key) {
    return view().client().grabIsTaken(XCB_MOD_MASK_4, key.xKeycode);
}

int Stage::grabbedCount() {
    return static_cast<int>(std::ranges::count_if(rules(), [this](const RuleSpec &rule) {
        return isOnCommand(rule) && isGrabbed(rule.key);
    }));
}

int Stage::ruleCount() const {
    return static_cast<int>(std::ranges::count_if(rules(), &isOnCommand));
}

void Stage::hold(const Chord &chord) {
    for (const std::uint8_t keycode : chord.keycodes)
        keyboard_.press(keycode);
}

void Stage::letGo(const Chord &chord) {
    std::for_each(chord.keycodes.rbegin(), chord.keycodes.rend(),
                  [this](std::uint8_t keycode) { keyboard_.release(keycode); });
}

void Stage::type(const QString &text) {
    for (const QChar character : text) {
        const auto position = positionOf(view().client(), character);
        if (!position)
            throw NotPrepared(QStringLiteral("no key for ") + character);
        const std::vector<std::uint8_t> plainly{position->keycode};
        const std::vector<std::uint8_t> shifted{testing::xkey::kLeftShift, position->keycode};
        press({.text = character, .keycodes = position->isShifted ? shifted : plainly});
    }
}

std::chrono::steady_clock::duration Stage::timeToRepeat() {
    constexpr int kRepeats = 5;
    const Chord typed = plain(keys::kH);
    bringFrontProgram();
    const auto start = std::chrono::steady_clock::now();
    prepare(
        QStringLiteral("a held key repeats"), [&] { hold(typed); },
        [&] { return front().pressesOf(keys::kH.xKeycode) > kRepeats; });
    const auto time = std::chrono::steady_clock::now() - start;
    letGo(typed);
    return time;
}

}  // namespace kestrelbay::desktop
