#include "desktop/stage/Story.h"

#include <cstdio>

#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {

using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

}  // namespace

Story::Story() : start_(Clock::now()) {}

void Story::tell(const QString &line) {
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

void Story::fail(const QString &line) {
    failures_.push_back(scene_ + QStringLiteral(": ") + line);
}

void Story::scene(const QString &name, const std::function<void()> &body) {
    scene_ = name;
    tell(QStringLiteral("\n%1").arg(name));
    try {
        body();
    } catch (const std::exception &error) {
        const QString what = QString::fromUtf8(error.what());
        tell(QStringLiteral("FAILED %1").arg(what));
        fail(what);
    }
}

void Story::step(const Step &step) {
    const Clock::time_point start = Clock::now();
    step.act();
    const bool seen = testing::waitUntil(step.seen, step.timeout);
    const double time = millisecondsSince(start);
    const QString objection = seen ? step.objection() : QString();
    const bool ok = seen && objection.isEmpty();
    QString saw = step.saw();
    if (!objection.isEmpty())
        saw += QStringLiteral(", but ") + objection;
    tell(QStringLiteral("%1 %2 ms  %3 — expected %4 — saw %5")
             .arg(ok ? QStringLiteral("ok    ") : QStringLiteral("FAILED"))
             .arg(time, 8, 'f', 1)
             .arg(step.done, step.expected, saw));
    if (ok)
        ++seen_;
    else
        fail(step.done + QStringLiteral(" — expected ") + step.expected);
}

bool Story::conclude(const QString &title) {
    const auto failed = static_cast<int>(failures_.size());
    tell(QStringLiteral("\n%1: %2 of %3 seen, in %4 s")
             .arg(title)
             .arg(seen_)
             .arg(seen_ + failed)
             .arg(millisecondsSince(start_) / 1000, 0, 'f', 1));
    for (const QString &failure : failures_)
        tell(QStringLiteral("not seen: ") + failure);
    return failed == 0 && seen_ > 0;
}

}  // namespace kestrelbay::desktop
