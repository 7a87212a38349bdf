#include "app/RuleRunner.h"

#include <chrono>
#include <utility>

#include <QGuiApplication>
#include <QtMath>

#include "app/IconImage.h"
#include "app/LaunchToastWindow.h"
#include "launcher/AppLauncher.h"
#include "model/ShortcutRule.h"
#include "platform/ApplicationCatalog.h"
#include "platform/Clock.h"
#include "platform/DispatchQueue.h"
#include "platform/SystemLog.h"
#include "platform/SystemSounds.h"
#include "settings/SettingsKeys.h"

namespace kestrelbay {

namespace {

constexpr std::chrono::milliseconds kSlowLaunch{500};

void playFeedbackSound(const RuleRunner::Services &services) {
    const QString name = read(services.defaults, settings::kSoundFeedbackName);
    if (!name.isEmpty())
        services.sounds.play(name);
}

void handleTimed(const RuleRunner::Services &services, const ShortcutRule &rule) {
    const Clock::TimePoint start = services.clock.now();
    services.launcher.handle(rule);
    const std::chrono::duration<double> elapsed = services.clock.now() - start;
    if (elapsed <= kSlowLaunch)
        return;
    services.log.write(QStringLiteral("KestrelBay [WARN] AppLauncher.handle took ") +
                       QString::number(elapsed.count(), 'f', 2) + QStringLiteral("s for ") +
                       rule.appPath);
}

/// Enough for the sharpest screen, since the toast may appear on any. In device pixels.
int launchToastIconSide() {
    const auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    const qreal ratio = application ? application->devicePixelRatio() : 1;
    return qCeil(LaunchToastWindow::kIconSide * ratio);
}

void queueLaunchToast(const std::shared_ptr<const RuleRunner::Services> &services,
                      const ShortcutRule &rule, int iconSide) {
    if (!services->showLaunchToast)
        return;
    const LaunchToastDuration duration = currentLaunchToastDuration(services->defaults);
    if (duration == LaunchToastDuration::None)
        return;
    // Reading and drawing an icon can take longer than a key press may wait.
    const QImage image = iconImage(services->catalog.icon(rule.appPath), iconSide);
    services->mainQueue.async([services, icon = iconOfImage(image), duration] {
        services->showLaunchToast(icon, duration);
    });
}

}  // namespace

RuleRunner::RuleRunner(Services services)
    : services_(std::make_shared<const Services>(std::move(services))) {}

void RuleRunner::ruleFired(const ShortcutRule &rule) const {
    services_->mainQueue.async([services = services_] { playFeedbackSound(*services); });
    services_->launchQueue.async([services = services_, rule, iconSide = launchToastIconSide()] {
        handleTimed(*services, rule);
        queueLaunchToast(services, rule, iconSide);
    });
}

}  // namespace kestrelbay
