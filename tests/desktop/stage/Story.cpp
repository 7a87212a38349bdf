#include "desktop/stage/Story.h"

#include <cstdio>
#include <utility>

#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {

using Clock = std::chrono::steady_clock;

/// For what is not expected, before it is believed.
constexpr std::chrono::seconds kLongEnoughInVain{2};

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

}  // namespace

Story::Story(QString windowManager, Tells tells)
    : start_(Clock::now()), windowManager_(std::move(windowManager)), tells_(tells) {}

void Story::tell(const QString &line) {
    told_ += line;
    if (tells_ == Tells::All)
        print();
}

void Story::fail(const QString &line) {
    failures_.push_back(scene_ + QStringLiteral(": ") + line);
}

void Story::print() {
    for (const QString &line : std::exchange(told_, {}))
        std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

void Story::scene(const QString &name, const std::function<void()> &body) {
    const std::size_t failuresBefore = failures_.size();
    scene_ = name;
    told_ = {QStringLiteral("\n%1").arg(name)};
    print();
    try {
        body();
    } catch (const std::exception &error) {
        const QString what = QString::fromUtf8(error.what());
        tell(QStringLiteral("FAILED %1").arg(what));
        fail(what);
    }
    if (failures_.size() > failuresBefore)
        print();
    told_.clear();
}

void Story::step(const Step &step) {
    const auto reason = step.needs ? whyNot(windowManager_, *step.needs) : std::nullopt;
    const Clock::time_point start = Clock::now();
    step.act();
    const bool seen = testing::waitUntil(step.seen, reason ? kLongEnoughInVain : step.timeout);
    const double time = millisecondsSince(start);
    QString objection = seen ? step.objection() : QString();
    const bool succeeded = seen && objection.isEmpty();
    if (succeeded && reason)
        objection = *reason;
    QString saw = step.saw();
    if (!objection.isEmpty())
        saw += QStringLiteral(", but ") + objection;
    QString verdict = QStringLiteral("FAILED");
    if (reason && !succeeded) {
        verdict = QStringLiteral("cannot");
        saw += QStringLiteral("; ") + *reason;
        ++cannot_;
    } else if (succeeded && !reason) {
        verdict = QStringLiteral("ok    ");
        ++seen_;
    } else {
        fail(step.done + QStringLiteral(" — expected ") + step.expected);
    }
    tell(QStringLiteral("%1 %2 ms  %3 — expected %4 — saw %5")
             .arg(verdict)
             .arg(time, 8, 'f', 1)
             .arg(step.done, step.expected, saw));
}

bool Story::conclude(const QString &title) {
    const auto failed = static_cast<int>(failures_.size());
    const QString cannot =
        cannot_ > 0 ? QStringLiteral("%1 that it cannot, ").arg(cannot_) : QString();
    tell(QStringLiteral("\n%1: %2 of %3 seen, %4in %5 s")
             .arg(title)
             .arg(seen_)
             .arg(seen_ + failed)
             .arg(cannot)
             .arg(millisecondsSince(start_) / 1000, 0, 'f', 1));
    for (const QString &failure : failures_)
        tell(QStringLiteral("not seen: ") + failure);
    print();
    return failed == 0 && seen_ > 0;
}

}  // namespace kestrelbay::desktop
