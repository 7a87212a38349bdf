#include "desktop/stage/WaylandStage.h"

#include <algorithm>

#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {
/// For a press that nobody got.
constexpr std::chrono::seconds kPressPatience{2};
}  // namespace

void WaylandStage::furnish() {
    const QString program = desktop().withinReach(options().program);
    if (program != options().program) {
        useProgram(program);
        // Nor could the user read which leaks the sanitizer is to pass over.
        setProgramVariable(QStringLiteral("LSAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    }
    StageBase::furnish();
    std::vector<RuleSpec> all = rules();
    const RuleSpec recorder{
        .appPath = desktop().home().applicationPath(QStringLiteral("kestrel-arguments.desktop")),
        .modifierFlags = flags::kCommand,
        .argumentKind = QStringLiteral("launchArgs")};
    RuleSpec &taken = all.emplace_back(recorder);
    taken.appName = QLatin1String(kUsersName);
    taken.key = kUsersKey;
    taken.launchArguments = QLatin1String(kUsersArgument);
    RuleSpec &oneSided = all.emplace_back(recorder);
    oneSided.appName = QLatin1String(kOneSidedName);
    oneSided.key = kOneSidedKey;
    oneSided.modifierFlags = flags::kRightCommand;
    oneSided.launchArguments = QLatin1String(kOneSidedArgument);
    useRules(std::move(all));
    desktop().write(desktop().home().rulesPath(), rulesBytes());
    startFrontProgram();
}

void WaylandStage::startFrontProgram() {
    front_.emplace(desktop(), view(), desktop().keyboard());
    if (!testing::waitUntil([this] { return front_->id() != 0; }))
        throw std::runtime_error("the plain program has no window");
}

bool WaylandStage::hasHotkeys() {
    const Chord hotkey = leftCommand(scenario::kMarker);
    const int before = markers();
    bringFrontProgram();
    const auto isMarked = [&] { return markers() > before; };
    const auto isTyped = [&] { return front_->pressesOf(hotkey.keycodes.back()) > 0; };
    // Nobody gets a key that is just being given back.
    const auto pressAndSee = [&] {
        press(hotkey);
        return testing::waitUntil([&] { return isMarked() || isTyped(); }, kPressPatience);
    };
    if (!testing::waitUntil(pressAndSee))
        throw NotPrepared(QStringLiteral("nobody got ") + hotkey.text);
    return isMarked();
}

void WaylandStage::hold(const Chord &chord) {
    for (const std::uint8_t keycode : chord.keycodes)
        desktop().keyboard().press(keycode);
}

void WaylandStage::letGo(const Chord &chord) {
    std::for_each(chord.keycodes.rbegin(), chord.keycodes.rend(),
                  [this](std::uint8_t keycode) { desktop().keyboard().release(keycode); });
}

std::chrono::steady_clock::duration WaylandStage::timeToRepeat() {
    constexpr int kRepeats = 5;
    const Chord users = leftCommand(kUsersKey);
    const int before = usersPresses();
    const auto start = std::chrono::steady_clock::now();
    prepare(
        QStringLiteral("the user's own key repeats"), [&] { hold(users); },
        [&] { return usersPresses() > before + kRepeats; });
    const auto time = std::chrono::steady_clock::now() - start;
    letGo(users);
    return time;
}

void WaylandStage::restartCompositor() {
    front_.reset();
    desktop().restartCompositor();
    startFrontProgram();
}

}  // namespace kestrelbay::desktop
