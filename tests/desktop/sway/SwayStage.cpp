#include "desktop/sway/SwayStage.h"

#include <algorithm>

#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {

constexpr Cast kCast{
    .terminal = {.entry = "foot", .program = "foot", .window = "foot"},
    .terminalArguments = R"(-d error -T 'two words: it\'s')",
    .terminalArgumentLines = "-d\nerror\n-T\ntwo words: it's",
    .otherTerminal = {.entry = "debian-xterm", .program = "xterm", .window = "XTerm"},
    .editor = {.entry = "org.xfce.mousepad", .program = "mousepad", .window = "mousepad"},
    .files = {.entry = "thunar", .program = "thunar", .window = "thunar"},
    .modifierFlags = flags::kCommand,
};

/// sway takes the keys' names, and a line of a shell.
constexpr const char *kConfiguration = "bindsym Mod4+t exec echo pressed >>\"$HOME/users-key\"\n";

}  // namespace

SwayStage::SwayStage(StageOptions options)
    : StageBase(std::move(options), kCast), session_(kConfiguration), view_(session_) {
    const QString program = session_.withinReach(StageBase::options().program);
    if (program != StageBase::options().program) {
        useProgram(program);
        // Nor could the user read which leaks the sanitizer is to pass over.
        setProgramVariable(QStringLiteral("LSAN_OPTIONS"), QStringLiteral("detect_leaks=0"));
    }
    furnish();
    std::vector<RuleSpec> rules = StageBase::rules();
    const RuleSpec recorder{
        .appPath = session_.home().applicationPath(QStringLiteral("kestrel-arguments.desktop")),
        .modifierFlags = flags::kCommand,
        .argumentKind = QStringLiteral("launchArgs")};
    RuleSpec &taken = rules.emplace_back(recorder);
    taken.appName = QLatin1String(kUsersName);
    taken.key = kUsersKey;
    taken.launchArguments = QLatin1String(kUsersArgument);
    RuleSpec &oneSided = rules.emplace_back(recorder);
    oneSided.appName = QLatin1String(kOneSidedName);
    oneSided.key = kOneSidedKey;
    oneSided.modifierFlags = flags::kRightCommand;
    oneSided.launchArguments = QLatin1String(kOneSidedArgument);
    useRules(std::move(rules));
    session_.write(session_.home().rulesPath(), rulesBytes());
    startFrontProgram();
}

SwayStage::~SwayStage() {
    dropProgram();
}

void SwayStage::startFrontProgram() {
    front_.emplace(session_, view_, session_.keyboard());
    if (!testing::waitUntil([this] { return front_->id() != 0; }))
        throw std::runtime_error("the plain program has no window");
}

int SwayStage::usersPresses() const {
    return static_cast<int>(
        HomeFolder::read(session_.home().path(QStringLiteral("users-key"))).count('\n'));
}

bool SwayStage::hasHotkeys() {
    const Chord hotkey = leftCommand(scenario::kMarker);
    const int before = markers();
    bringFrontProgram();
    press(hotkey);
    const auto isMarked = [&] { return markers() > before; };
    const auto isTyped = [&] { return front_->pressesOf(hotkey.keycodes.back()) > 0; };
    if (!testing::waitUntil([&] { return isMarked() || isTyped(); }))
        throw NotPrepared(QStringLiteral("nobody got ") + hotkey.text);
    return isMarked();
}

void SwayStage::hold(const Chord &chord) {
    for (const std::uint8_t keycode : chord.keycodes)
        session_.keyboard().press(keycode);
}

void SwayStage::letGo(const Chord &chord) {
    std::for_each(chord.keycodes.rbegin(), chord.keycodes.rend(),
                  [this](std::uint8_t keycode) { session_.keyboard().release(keycode); });
}

std::chrono::steady_clock::duration SwayStage::timeToRepeat() {
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

void SwayStage::restartCompositor() {
    front_.reset();
    session_.restartCompositor();
    startFrontProgram();
}

}  // namespace kestrelbay::desktop
