#include "desktop/stage/Stage.h"

#include <algorithm>
#include <csignal>

#include <QDir>

#include "desktop/display/Typing.h"
#include "support/ChildProcess.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {
/// For a request that may have been lost, before it is made again.
constexpr std::chrono::milliseconds kPatience{500};

bool isOnCommand(const RuleSpec &rule) {
    return (rule.modifierFlags & flags::kAllModifiers) == flags::kCommand;
}
}  // namespace

Stage::Stage(StageOptions options)
    : options_(std::move(options)),
      desktop_(options_.windowManager, options_.serverArguments),
      front_(desktop_.displayName()),
      keyboard_(desktop_.displayName()),
      rules_(scenarioRules(desktop_.home())),
      rulesBytes_(rulesJson(rules_)),
      story_(options_.windowManager) {
    if (!options_.artifacts.isEmpty())
        QDir().mkpath(options_.artifacts);
    HomeFolder::write(desktop_.home().rulesPath(), rulesBytes_);
    HomeFolder::write(
        desktop_.home().path(QStringLiteral("notes/")) + QLatin1String(scenario::kFileName),
        "A note.\n");
    QDir(desktop_.home().path()).mkpath(QLatin1String(scenario::kFolderName));
}

PtyProcess &Stage::program() {
    if (!program_ || !program_->isRunning())
        throw NotPrepared(QStringLiteral("KestrelBay is not running: ") +
                          (program_ ? program_->ending() : QStringLiteral("never started")));
    return *program_;
}

void Stage::startProgram(const QStringList &arguments) {
    program_.reset();
    QProcessEnvironment environment = desktop_.environment();
    environment.insert(programVariables_);
    program_.emplace(programPath(), arguments, environment);
}

void Stage::setProgramVariable(const QString &name, const QString &value) {
    if (value.isEmpty())
        programVariables_.remove(name);
    else
        programVariables_.insert(name, value);
}

Stage::Ending Stage::startAgain(const QStringList &arguments) {
    return startAgain(arguments, desktop().environment());
}

Stage::Ending Stage::startAgain(const QStringList &arguments,
                                const QProcessEnvironment &environment) const {
    testing::ChildProcess process(programPath(), arguments, environment);
    if (!process.waitForExit())
        return {};
    const int code = process.exitCode();
    return {.code = code, .output = QString::fromUtf8(process.output())};
}

void Stage::endProgram() {
    if (!program_ || !program_->isRunning())
        return;
    prepare(
        QStringLiteral("KestrelBay ended"), [&] { program_->sendSignal(SIGTERM); },
        [&] { return !program_->isRunning(); });
    if (program_->exitCode() != 0)
        throw NotPrepared(QStringLiteral("KestrelBay ended with %1: %2")
                              .arg(program_->ending(), program_->lines().join(u'\n')));
}

bool Stage::isGrabbed(const Key &key) {
    return view().client().grabIsTaken(XCB_MOD_MASK_4, key.xKeycode);
}

int Stage::grabbedCount() {
    return static_cast<int>(std::ranges::count_if(
        rules_, [this](const RuleSpec &rule) { return isOnCommand(rule) && isGrabbed(rule.key); }));
}

int Stage::ruleCount() const {
    return static_cast<int>(std::ranges::count_if(rules_, &isOnCommand));
}

void Stage::useRules(std::vector<RuleSpec> rules) {
    rules_ = std::move(rules);
    rulesBytes_ = rulesJson(rules_);
}

void Stage::hold(const Chord &chord) {
    for (const std::uint8_t keycode : chord.keycodes)
        keyboard_.press(keycode);
}

void Stage::letGo(const Chord &chord) {
    std::for_each(chord.keycodes.rbegin(), chord.keycodes.rend(),
                  [this](std::uint8_t keycode) { keyboard_.release(keycode); });
}

void Stage::press(const Chord &chord) {
    hold(chord);
    letGo(chord);
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

void Stage::press(const Chord &chord, Step step) {
    if (step.done.isEmpty())
        step.done = told(chord);
    step.act = [this, chord] { press(chord); };
    story_.step(step);
}

QString Stage::told(const Chord &chord) {
    QStringList codes;
    for (const std::uint8_t keycode : chord.keycodes)
        codes += QString::number(keycode);
    return QStringLiteral("pressed %1 (X %2)").arg(chord.text, codes.join(u' '));
}

void Stage::prepare(const QString &what, const std::function<void()> &act,
                    const std::function<bool()> &condition) {
    act();
    if (testing::waitUntil(condition))
        return;
    screenshot(QStringLiteral("could-not-prepare"));
    keepLog(QStringLiteral("could-not-prepare"));
    throw NotPrepared(QStringLiteral("could not prepare: %1; %2").arg(what, frontInWords()));
}

void Stage::bringForward(Window window) {
    // Asked once more when nothing came of it: a window manager that is just giving
    // the focus of a closed window to another one prefers that to our request.
    const auto askAndSee = [&] {
        view().activate(window);
        return testing::waitUntil(
            [&] { return view().isInFront(window) && view().hasFocus(window); }, kPatience);
    };
    prepare(
        view().describe(window) + QStringLiteral(" in front"), [] {}, askAndSee);
}

void Stage::bringFrontProgram() {
    bringForward(front_.id());
    front_.forget();
}

std::vector<Stage::Window> Stage::windowsOf(const char *windowClass) {
    return view().windowsOf(QLatin1String(windowClass));
}

Stage::Window Stage::windowOf(const char *windowClass) {
    const auto windows = windowsOf(windowClass);
    if (windows.empty())
        throw NotPrepared(QLatin1String(windowClass) + QStringLiteral(" has no window"));
    return windows.front();
}

bool Stage::isInFront(const char *windowClass, const QString &titlePart) {
    const auto isOurs = [&](Window w) {
        return view().windowClass(w) == QLatin1String(windowClass);
    };
    const Window window = view().active();
    return isOurs(window) && view().title(window).contains(titlePart) && view().isShown(window) &&
           isOurs(view().frontMostAt(window));
}

bool Stage::areHidden(const std::vector<Window> &windows) {
    return !windows.empty() && std::ranges::none_of(windows, [&](Window window) {
        return view().active() == window || (can(Ability::Minimises) && view().isShown(window));
    });
}

QString Stage::hidingInWords() const {
    return can(Ability::Minimises) ? QStringLiteral("it hides")
                                   : QStringLiteral("it is left, for it cannot be minimised");
}

void Stage::closeAll(const char *windowClass, const std::vector<Window> &except) {
    const auto others = [&] {
        auto windows = windowsOf(windowClass);
        std::erase_if(windows, [&](Window w) { return std::ranges::count(except, w) != 0; });
        return windows;
    };
    // A program that has just started does not listen yet, so it is asked again.
    const auto askAndSee = [&] {
        for (const Window window : others())
            view().close(window);
        return testing::waitUntil([&] { return others().empty(); }, kPatience);
    };
    prepare(
        QLatin1String(windowClass) + QStringLiteral(" closed"), [] {}, askAndSee);
}

QString Stage::frontInWords() {
    return QStringLiteral("in front: ") + view().describe(view().active());
}

int Stage::markers() const {
    return static_cast<int>(
        desktop_.processes().withArgument(QLatin1String(scenario::kMarkerArgument)).size());
}

void Stage::screenshot(const QString &name) {
    if (!options_.artifacts.isEmpty())
        desktop_.screenshot(QDir(options_.artifacts).filePath(name + QStringLiteral(".png")));
}

void Stage::keepLog(const QString &name) {
    if (!options_.artifacts.isEmpty() && program_)
        HomeFolder::write(QDir(options_.artifacts).filePath(name + QStringLiteral(".log")),
                          program_->lines().join(u'\n').toUtf8() + '\n');
}

}  // namespace kestrelbay::desktop
