#include "desktop/stage/StageBase.h"

#include <algorithm>
#include <csignal>

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDir>

#include "support/ChildProcess.h"
#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {
/// For a request that may have been lost, before it is made again.
constexpr std::chrono::milliseconds kPatience{500};
constexpr std::chrono::seconds kUntilOnBus{3};
}  // namespace

StageBase::StageBase(StageOptions options, const Cast &cast)
    : options_(std::move(options)), cast_(cast), story_(options_.windowManager, options_.tells) {
    if (!options_.artifacts.isEmpty())
        QDir().mkpath(options_.artifacts);
}

void StageBase::furnish() {
    const HomeFolder &home = desktop().home();
    useRules(scenarioRules(home, cast_));
    QDir(home.path()).mkpath(QLatin1String(scenario::kFolderName));
    desktop().write(home.rulesPath(), rulesBytes_);
    desktop().write(home.path(QStringLiteral("notes/")) + QLatin1String(scenario::kFileName),
                    "A note.\n");
}

PtyProcess &StageBase::program() {
    if (!program_ || !program_->isRunning())
        throw NotPrepared(QStringLiteral("KestrelBay is not running: ") +
                          (program_ ? program_->ending() : QStringLiteral("never started")));
    return *program_;
}

void StageBase::startProgram(const QStringList &arguments) {
    program_.reset();
    QProcessEnvironment environment = desktop().environment();
    environment.insert(programVariables_);
    const Command command = desktop().command(programPath(), arguments);
    program_.emplace(command.program, command.arguments, environment);
}

void StageBase::setProgramVariable(const QString &name, const QString &value) {
    if (value.isEmpty())
        programVariables_.remove(name);
    else
        programVariables_.insert(name, value);
}

StageBase::Ending StageBase::startAgain(const QStringList &arguments) {
    return startAgain(arguments, desktop().environment());
}

StageBase::Ending StageBase::startAgain(const QStringList &arguments,
                                        const QProcessEnvironment &environment) {
    // One that is asked before the other is on the bus would itself become the one that runs.
    if (program_ && program_->isRunning())
        (void)testing::waitUntil([this] { return isOnBus(); }, kUntilOnBus);
    const Command command = desktop().command(programPath(), arguments);
    testing::ChildProcess process(command.program, command.arguments, environment);
    if (!process.waitForExit())
        return {};
    const int code = process.exitCode();
    return {.code = code, .output = QString::fromUtf8(process.output())};
}

bool StageBase::isOnBus() {
    const QString address =
        desktop().environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
    const QString name = QStringLiteral("looks for KestrelBay");
    const bool isThere = [&] {
        const QDBusConnection bus = QDBusConnection::connectToBus(address, name);
        return !bus.isConnected() ||
               bus.interface()->isServiceRegistered(QStringLiteral("org.kestrelbay.KestrelBay"));
    }();
    QDBusConnection::disconnectFromBus(name);
    return isThere;
}

void StageBase::endProgram() {
    if (!program_ || !program_->isRunning())
        return;
    prepare(
        QStringLiteral("KestrelBay ended"), [&] { program_->sendSignal(SIGTERM); },
        [&] { return !program_->isRunning(); });
    if (program_->exitCode() != 0)
        throw NotPrepared(QStringLiteral("KestrelBay ended with %1: %2")
                              .arg(program_->ending(), program_->lines().join(u'\n')));
}

void StageBase::useRules(std::vector<RuleSpec> rules) {
    rules_ = std::move(rules);
    rulesBytes_ = rulesJson(rules_);
}

void StageBase::press(const Chord &chord) {
    hold(chord);
    letGo(chord);
}

void StageBase::press(const Chord &chord, Step step) {
    if (step.done.isEmpty())
        step.done = told(chord);
    step.act = [this, chord] { press(chord); };
    story_.step(step);
}

QString StageBase::told(const Chord &chord) {
    QStringList codes;
    for (const std::uint8_t keycode : chord.keycodes)
        codes += QString::number(keycode);
    return QStringLiteral("pressed %1 (X %2)").arg(chord.text, codes.join(u' '));
}

void StageBase::prepare(const QString &what, const std::function<void()> &act,
                        const std::function<bool()> &condition) {
    act();
    if (testing::waitUntil(condition))
        return;
    screenshot(QStringLiteral("could-not-prepare"));
    keepLog(QStringLiteral("could-not-prepare"));
    throw NotPrepared(QStringLiteral("could not prepare: %1; %2").arg(what, frontInWords()));
}

void StageBase::bringForward(Window window) {
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

void StageBase::bringFrontProgram() {
    bringForward(front().id());
    front().forget();
}

std::vector<StageBase::Window> StageBase::windowsOf(const char *windowClass) {
    return view().windowsOf(QLatin1String(windowClass));
}

StageBase::Window StageBase::windowOf(const char *windowClass) {
    const auto windows = windowsOf(windowClass);
    if (windows.empty())
        throw NotPrepared(QLatin1String(windowClass) + QStringLiteral(" has no window"));
    return windows.front();
}

bool StageBase::isInFront(const char *windowClass, const QString &titlePart) {
    const auto isOurs = [&](Window w) {
        return view().windowClass(w) == QLatin1String(windowClass);
    };
    const Window window = view().active();
    return isOurs(window) && view().title(window).contains(titlePart) && view().isShown(window) &&
           isOurs(view().frontMostAt(window));
}

bool StageBase::areHidden(const std::vector<Window> &windows) {
    return !windows.empty() && std::ranges::none_of(windows, [&](Window window) {
        return view().active() == window || (can(Ability::Minimises) && view().isShown(window));
    });
}

QString StageBase::hidingInWords() const {
    return can(Ability::Minimises) ? QStringLiteral("it hides")
                                   : QStringLiteral("it is left, for it cannot be minimised");
}

void StageBase::closeAll(const char *windowClass, const std::vector<Window> &except) {
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

QString StageBase::frontInWords() {
    return QStringLiteral("in front: ") + view().describe(view().active());
}

int StageBase::markers() {
    return static_cast<int>(
        desktop().processes().withArgument(QLatin1String(scenario::kMarkerArgument)).size());
}

void StageBase::screenshot(const QString &name) {
    if (!options_.artifacts.isEmpty())
        desktop().screenshot(QDir(options_.artifacts).filePath(name + QStringLiteral(".png")));
}

void StageBase::keepLog(const QString &name) {
    if (!options_.artifacts.isEmpty() && program_)
        HomeFolder::write(QDir(options_.artifacts).filePath(name + QStringLiteral(".log")),
                          program_->lines().join(u'\n').toUtf8() + '\n');
}

}  // namespace kestrelbay::desktop
