#include "app/AppDelegate.h"

#include <QDir>

#include <chrono>

#include "platform/Platform.h"
#include "platform/Workspace.h"

namespace kestrelbay {

namespace {

// Often enough that a permission just granted seems to take effect at once.
constexpr std::chrono::seconds kAccessibilityPollInterval{1};

QStringList applicationPaths(const ShortcutManager::Rules &rules) {
    QStringList paths;
    for (const ShortcutRule &rule : rules) {
        if (!rule.appPath.isEmpty())
            paths.append(rule.appPath);
    }
    paths.removeDuplicates();
    return paths;
}

}  // namespace

AppDelegate::AppDelegate(Platform &platform)
    : platform_(platform),
      launcher_(platform.workspace(), platform.systemLog()),
      ruleRunner_({.launcher = launcher_,
                   .catalog = platform.applicationCatalog(),
                   .defaults = platform.userDefaults(),
                   .sounds = platform.systemSounds(),
                   .log = platform.systemLog(),
                   .clock = clock_,
                   .mainQueue = mainQueue_,
                   .launchQueue = launchQueue_,
                   .showLaunchToast = {}}),
      service_(this, {},
               {{QStringLiteral("toggle-all-shortcuts"), [this] { toggleAllShortcuts(); }}}) {
    connect(&accessibilityPoller_, &QTimer::timeout, this, [this] {
        manager_->reinstallEventTap();
        if (manager_->isAccessibilityGranted())
            accessibilityPoller_.stop();
    });
}

AppDelegate::~AppDelegate() = default;

bool AppDelegate::registerOnSessionBus() {
    return service_.registerOnSessionBus();
}

void AppDelegate::performAction(const QString &name) {
    service_.ActivateAction(name, {}, {});
}

void AppDelegate::applicationDidFinishLaunching() {
    ShortcutManager::Hooks hooks;
    hooks.ruleFired = [this](const ShortcutRule &rule) { ruleRunner_.ruleFired(rule); };
    hooks.rulesChanged = [this](const ShortcutManager::Rules &rules) {
        platform_.workspace().prepare(applicationPaths(rules));
    };
    const QString folder =
        QDir(platform_.applicationSupportDirectory()).filePath(QStringLiteral("KestrelBay"));
    manager_ = std::make_unique<ShortcutManager>(folder, platform_.eventTap(),
                                                 platform_.systemLog(), std::move(hooks));
    ShortcutManager::setShared(*manager_);
    if (!manager_->isAccessibilityGranted())
        startAccessibilityPolling();
}

void AppDelegate::startAccessibilityPolling() {
    accessibilityPoller_.start(kAccessibilityPollInterval);
}

void AppDelegate::toggleAllShortcuts() {
    if (manager_)
        manager_->setEnabled(!manager_->isEnabled());
}

}  // namespace kestrelbay
