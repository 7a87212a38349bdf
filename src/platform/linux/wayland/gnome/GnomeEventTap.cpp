#include "platform/linux/wayland/gnome/GnomeEventTap.h"

#include <functional>
#include <utility>

#include <QCoreApplication>
#include <QDBusError>

#include "platform/linux/wayland/gnome/ShellAccelerator.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::gnome {

namespace {

/// As long as nobody notices at a start.
constexpr std::chrono::milliseconds kPatienceAtStart{300};
/// As long as a Shell that has just come up may be busy.
constexpr std::chrono::seconds kPatienceLater{10};

bool isAnotherServed(const QDBusError &error) {
    return error.type() == QDBusError::AccessDenied;
}

}  // namespace

GnomeEventTap::GnomeEventTap(std::shared_ptr<const ShellExtension> shell, Settings settings)
    : shell_(std::move(shell)), settings_(settings) {}

GnomeEventTap::~GnomeEventTap() {
    remove();
}

bool GnomeEventTap::install(Handlers handlers) {
    if (!news_)
        listen();
    if (!isThere_) {
        problem_ = TapProblem::ExtensionMissing;
        return false;
    }
    QDBusPendingReply<QStringList> reply =
        shell_->send(u"SetHotkeys"_s, {accelerators()}, kPatienceAtStart);
    reply.waitForFinished();
    if (reply.isError() && isAnotherServed(reply.error())) {
        problem_ = TapProblem::OtherInstance;
        return false;
    }
    problem_ = TapProblem::None;
    session_ = std::make_unique<Session>();
    session_->nextPause = settings_.firstRetry;
    session_->retry.setSingleShot(true);
    QObject::connect(&session_->retry, &QTimer::timeout, &session_->retry, [this] { bind(); });
    takeRefusals(reply);
    handlers_ = std::move(handlers);
    return true;
}

void GnomeEventTap::listen() {
    news_.emplace(*shell_);
    QObject::connect(&*news_, &ShellNews::pressed, &*news_,
                     [this](const QString &accelerator) { pressed(accelerator); });
    QObject::connect(&*news_, &ShellNews::bindingsChanged, &*news_, [this] { noteBindings(); });
    QObject::connect(&*news_, &ShellNews::came, &*news_, [this] { setThere(true); });
    QObject::connect(&*news_, &ShellNews::gone, &*news_, [this] { setThere(false); });
    isThere_ = shell_->isThere();
}

void GnomeEventTap::remove() {
    if (!session_)
        return;
    session_.reset();
    handlers_ = {};
    static_cast<void>(shell_->send(u"SetHotkeys"_s, {QStringList()}));
}

void GnomeEventTap::setWantedHotkeys(const std::vector<Hotkey> &hotkeys) {
    wanted_.clear();
    for (const Hotkey &hotkey : hotkeys) {
        const QString accelerator = acceleratorOf(hotkey);
        if (!accelerator.isEmpty())
            wanted_.emplace(accelerator, hotkey);
    }
    if (!session_)
        return;
    session_->nextPause = settings_.firstRetry;
    bind();
}

QStringList GnomeEventTap::accelerators() const {
    QStringList texts;
    for (const auto &[accelerator, hotkey] : wanted_)
        texts.append(accelerator);
    return texts;
}

void GnomeEventTap::bind() {
    session_->retry.stop();
    if (!isThere_)
        return;
    const QStringList bound = session_->recording.isOn() ? QStringList() : accelerators();
    // An earlier answer is out of date.
    session_->answer = std::make_unique<QDBusPendingCallWatcher>(
        shell_->send(u"SetHotkeys"_s, {bound}, kPatienceLater));
    QObject::connect(session_->answer.get(), &QDBusPendingCallWatcher::finished,
                     session_->answer.get(), [this] { takeAnswer(); });
}

void GnomeEventTap::takeAnswer() {
    QDBusPendingCallWatcher *const answer = session_->answer.release();
    // It is what calls this.
    answer->deleteLater();
    const QDBusPendingReply<QStringList> reply(*answer);
    if (reply.isError() && isAnotherServed(reply.error())) {
        lose(TapProblem::OtherInstance);
        return;
    }
    const QStringList before = session_->refused;
    takeRefusals(reply);
    if (session_->refused == before || !handlers_.refusalsChanged)
        return;
    const auto changed = handlers_.refusalsChanged;  // it may remove the tap
    changed();
}

void GnomeEventTap::takeRefusals(const QDBusPendingReply<QStringList> &reply) {
    // Those of whom nothing was said are asked for once more.
    if (!reply.isError() && !session_->recording.isOn())
        session_->refused = reply.value();
    if (reply.isError() || !session_->refused.isEmpty())
        retryLater();
}

void GnomeEventTap::retryLater() {
    const std::chrono::milliseconds pause = session_->nextPause;
    if (pause > settings_.longestRetry)
        return;
    session_->nextPause = pause * 2;
    // By the event loop, which need not be there yet.
    QMetaObject::invokeMethod(
        &session_->retry, [&retry = session_->retry, pause] { retry.start(pause); },
        Qt::QueuedConnection);
}

void GnomeEventTap::pressed(const QString &accelerator) const {
    const auto found = wanted_.find(accelerator);
    if (!session_ || session_->recording.isOn() || found == wanted_.end() ||
        !handlers_.hotkeyPressed)
        return;
    // Copies: whoever is called may remove the tap.
    const Hotkey hotkey = found->second;
    const auto handler = handlers_.hotkeyPressed;
    handler(hotkey);
}

void GnomeEventTap::noteBindings() {
    if (!session_ || session_->refused.isEmpty())
        return;
    // Not at once: what the user has freed, the program that had it gives back in its own time.
    session_->nextPause = settings_.firstRetry;
    retryLater();
}

void GnomeEventTap::setThere(bool isThere) {
    const bool wasThere = std::exchange(isThere_, isThere);
    if (!session_)
        return;
    session_->nextPause = settings_.firstRetry;
    // One that was replaced at once knows nothing of this program either.
    bind();
    if (wasThere == isThere || !handlers_.withheldChanged)
        return;
    const auto changed = handlers_.withheldChanged;  // it may remove the tap
    changed();
}

bool GnomeEventTap::setRecording(bool recording) {
    if (!session_ || QCoreApplication::instance() == nullptr)
        return false;
    if (session_->recording.set(recording, handlers_.event))
        bind();
    return true;
}

std::vector<RefusedHotkey> GnomeEventTap::refusedHotkeys() const {
    std::vector<RefusedHotkey> refused;
    if (!session_)
        return refused;
    for (const auto &[accelerator, hotkey] : wanted_) {
        if (session_->refused.contains(accelerator))
            refused.push_back({hotkey});
    }
    return refused;
}

bool GnomeEventTap::areKeysWithheld() const {
    return session_ && !isThere_;
}

void GnomeEventTap::lose(TapProblem problem) {
    problem_ = problem;
    const std::function<void()> lost = std::move(handlers_.lost);
    remove();
    if (lost)
        lost();
}

}  // namespace kestrelbay::gnome
