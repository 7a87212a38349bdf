#include "app/AppDelegate.h"

#include <QCoreApplication>
#include <QPixmapCache>
#include <QThreadPool>

#include <chrono>
#include <utility>

#include "app/Alert.h"
#include "app/DiagnosticReport.h"
#include "app/about/AboutWindowController.h"
#include "app/onboarding/OnboardingWindowController.h"
#include "app/status/StatusItem.h"
#include "app/toasts/LaunchToastWindow.h"
#include "app/toasts/ToastWindow.h"
#include "hotkeys/TapProblems.h"
#include "model/RuleJson.h"
#include "platform/KeyboardLayout.h"
#include "platform/Platform.h"
#include "platform/SystemLog.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"
#include "preferences/window/PreferencesWindowController.h"
#include "settings/Language.h"
#include "settings/SettingsKeys.h"
#include "ui/look/Symbols.h"
#include "ui/look/SystemColors.h"
#include "ui/windows/Sheet.h"

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

/// Not QCoreApplication::quit(), which closes all windows first, as if the user did:
/// the guide would count as completed, and an open sheet could refuse.
void quit() {
    QCoreApplication::exit();
}

}  // namespace

std::unique_ptr<ShortcutManager> AppDelegate::makeManager(Platform &platform,
                                                          ShortcutManager::Hooks hooks) {
    return std::make_unique<ShortcutManager>(storageDirectory(platform), platform.eventTap(),
                                             platform.systemLog(), std::move(hooks));
}

AppDelegate::AppDelegate(Platform &platform, Timers &timers,
                         std::unique_ptr<ShortcutManager> manager, bool isStyleNamed)
    : platform_(platform),
      timers_(timers),
      appearance_(platform.systemSettings(), isStyleNamed),
      launchQueue_([&platform] { platform.hurryThisThread(); }),
      toastServices_{platform.nativeWindow(), timers, mainQueue_},
      launcher_(platform.workspace(), platform.systemLog()),
      unseenWindows_(platform.systemLog(),
                     [](const QString &message) { ToastWindow::show(message); }),
      ruleRunner_(ruleRunnerServices()),
      launchAtLogin_(platform.loginItem(), platform.userDefaults(),
                     [this](const LaunchAtLogin::Failure &failure) {
                         showAlert(preferences_ ? preferences_->window() : nullptr, failure);
                     }),
      manager_(std::move(manager)),
      menu_({.toggleAllShortcuts = [this] { toggleAllShortcuts(); },
             .openPreferences = [this] { openPreferences(); },
             .openOnboarding = [this] { openOnboarding(); },
             .showAbout = [this] { showAbout(); },
             .quit = quit}),
      service_({.activate = [this] { openPreferences(); },
                .actions = serviceActions(),
                .runRule = [this](const QString &id,
                                  const QString &token) { return runRule(id, token); },
                .report = [this] { return diagnosticReport(platform_, manager_.get()); },
                .importRules = [this](const QString &rules) { return importRules(rules); }}) {
    // Qt scales images in it. Its threads sleep until they are ended with the others.
    QThreadPool::globalInstance()->setExpiryTimeout(-1);
    Language::setDefaults(&platform.userDefaults());
    ToastPanel::setServices(&toastServices_);
    setSystemSymbols(platform.systemSymbols());
    colors::setSystemTints(platform.systemTints());
    setSystemAlerts(platform.systemAlerts());
    platform.keyboardLayout().setChangeHandler(
        [this] { Q_EMIT notifications_.keyboardLayoutDidChange(); });
    platform.setReopenHandler([this] { openPreferences(); });
    // Log-out and Command-Q arrive as an event of the application.
    QCoreApplication::instance()->installEventFilter(this);
    // Not before the language is known.
    qtTexts_.emplace(notifications_);
}

AppDelegate::~AppDelegate() {
    platform_.setReopenHandler({});
    platform_.keyboardLayout().setChangeHandler({});
    setSystemAlerts(nullptr);
    colors::setSystemTints(nullptr);
    setSystemSymbols(nullptr);
    ToastPanel::setServices(nullptr);
    Language::setDefaults(nullptr);
}

bool AppDelegate::eventFilter(QObject *watched, QEvent *event) {
    if (watched != QCoreApplication::instance() || event->type() != QEvent::Quit)
        return QObject::eventFilter(watched, event);
    quit();
    return true;
}

RuleRunner::Services AppDelegate::ruleRunnerServices() {
    return {.launcher = launcher_,
            .workspace = platform_.workspace(),
            .catalog = platform_.applicationCatalog(),
            .defaults = platform_.userDefaults(),
            .sounds = platform_.systemSounds(),
            .log = platform_.systemLog(),
            .clock = clock_,
            .timers = timers_,
            .mainQueue = mainQueue_,
            .launchQueue = launchQueue_,
            .showLaunchToast = &LaunchToastWindow::show,
            .openedUnseen = [this](const QString &appPath) { unseenWindows_.opened(appPath); }};
}

PreferencesServices AppDelegate::preferencesServices() {
    return {.manager = *manager_,
            .defaults = platform_.userDefaults(),
            .catalog = platform_.applicationCatalog(),
            .workspace = platform_.workspace(),
            .sounds = platform_.systemSounds(),
            .systemSettings = platform_.systemSettings(),
            .desktopExtension = platform_.desktopExtension(),
            .nativeWindow = platform_.nativeWindow(),
            .screenLock = platform_.screenLock(),
            .hotkeyHolders = platform_.hotkeyHolders(),
            .keyboardLayout = platform_.keyboardLayout(),
            .launchAtLogin = launchAtLogin_,
            .notifications = notifications_,
            .timers = timers_,
            .mainQueue = mainQueue_,
            .backgroundQueue = backgroundQueue_,
            .addresses = Addresses::ofThisBuild(),
            .showToast = &ToastWindow::show};
}

ApplicationService::Actions AppDelegate::serviceActions() {
    return {{actions::kToggleAllShortcuts, [this] { toggleAllShortcuts(); }},
            {actions::kPreferences, [this] { openPreferences(); }},
            {actions::kWelcomeGuide, [this] { openOnboarding(); }},
            {actions::kAbout, [this] { showAbout(); }},
            {actions::kQuit, quit}};
}

bool AppDelegate::registerOnSessionBus() {
    return service_.registerOnSessionBus();
}

void AppDelegate::performAction(const QString &name) const {
    service_.performAction(name);
}

bool AppDelegate::runRule(const QString &id, const QString &activationToken) {
    const std::optional<QUuid> rule = ruleIdFromText(id);
    platform_.workspace().setActivationToken(activationToken);
    return rule && manager_->runRule(*rule);
}

bool AppDelegate::importRules(const QString &rules) {
    const auto decoded = decodeRules(rules.toUtf8());
    if (!decoded || !manager_->importRules(*decoded))
        return false;
    Q_EMIT notifications_.rulesWereTakenIn();
    return true;
}

void AppDelegate::applicationDidFinishLaunching() {
    platform_.becomeAccessory();
    ShortcutManager::setShared(*manager_);
    manager_->setHooks(managerHooks());
    prepareForRules();
    ruleFileFollower_ = std::make_unique<RuleFileFollower>(*manager_, timers_, [this] {
        return manager_->recordingCallback() || (preferences_ && preferences_->waitsForSheet());
    });
    if (canChange(manager_->tapProblem()))
        startAccessibilityPolling();
    menu_.build(manager_->isEnabled());
    statusItem_ = std::make_unique<StatusItem>(platform_.systemTray(), menu_);
    observeNotifications();
    if (!read(platform_.userDefaults(), settings::kOnboardingCompleted))
        showOnboarding();
}

ShortcutManager::Hooks AppDelegate::managerHooks() {
    return {
        .ruleFired = [this](const ShortcutRule &rule) { ruleRunner_.ruleFired(rule); },
        .rulesChanged = [this](const ShortcutManager::Rules &) { prepareForRules(); },
        // Later, as it may be a row of the list whose change came upon them.
        .rulesTakenIn =
            [this] { mainQueue_.async([this] { Q_EMIT notifications_.rulesWereTakenIn(); }); },
        // What was recorded goes into the rules first.
        .recordingEnded = [this] { mainQueue_.async([this] { ruleFileFollower_->lookAgain(); }); },
        .refusalsChanged = [this] { Q_EMIT notifications_.refusedHotkeysDidChange(); },
        .tapLost =
            [this] {
                startAccessibilityPolling();
                Q_EMIT notifications_.keyAccessDidChange();
            },
        .withheldChanged = [this] { Q_EMIT notifications_.keyAccessDidChange(); }};
}

void AppDelegate::prepareForRules() const {
    platform_.workspace().prepare(applicationPaths(manager_->rules()));
}

void AppDelegate::startAccessibilityPolling() {
    accessibilityPoller_ =
        timers_.every(kAccessibilityPollInterval, [this] { pollAccessibility(); });
}

void AppDelegate::pollAccessibility() {
    manager_->reinstallEventTap();
    if (canChange(manager_->tapProblem()))
        return;
    accessibilityPoller_.reset();
    if (manager_->isAccessibilityGranted())
        Q_EMIT notifications_.accessibilityGranted();
}

void AppDelegate::observeNotifications() {
    connect(&notifications_, &Notifications::openPreferencesToAccessibility, this,
            [this] { preferencesWindow().switchToAccessibilityRow(); });
    connect(&notifications_, &Notifications::languageDidChange, this,
            [this] { menu_.build(manager_->isEnabled()); });
}

void AppDelegate::toggleAllShortcuts() {
    manager_->setEnabled(!manager_->isEnabled());
    menu_.itemWithTag(StatusMenu::kEnabledTag)
        ->setText(StatusMenu::enabledTitle(manager_->isEnabled()));
    statusItem_->setShortcutsEnabled(manager_->isEnabled());
}

PreferencesWindowController &AppDelegate::preferencesWindow() {
    if (!preferences_) {
        preferences_ = std::make_unique<PreferencesWindowController>(preferencesServices());
        connect(preferences_.get(), &PreferencesWindowController::sheetClosed, this,
                [this] { ruleFileFollower_->lookAgain(); });
    }
    return *preferences_;
}

void AppDelegate::openPreferences() {
    preferencesWindow().showWindow();
}

void AppDelegate::giveUpClosedWindows() {
    if (preferences_)
        preferences_->forgetViews();
    // Left by a link, it has not told of its end.
    if (onboarding_ && !onboarding_->window()->isVisible())
        onboarding_.reset();
    about_.reset();
    QPixmapCache::clear();
    // Qt keeps the fonts that the text in an icon needs for the thread that has drawn it.
    backgroundQueue_.endIdleThreads();
    static_cast<void>(QThreadPool::globalInstance()->waitForDone(0));
    platform_.giveBackMemory();
}

void AppDelegate::showOnboarding() {
    onboarding_ = std::make_unique<OnboardingWindowController>(OnboardingWindowController::Services{
        .manager = *manager_,
        .defaults = platform_.userDefaults(),
        .systemSettings = platform_.systemSettings(),
        .desktopExtension = platform_.desktopExtension(),
        .systemTray = platform_.systemTray(),
        .nativeWindow = platform_.nativeWindow(),
        .timers = timers_,
        .showToast = [](const QString &message) { ToastWindow::show(message); }});
    onboarding_->setOnFinished([this](bool opensPreferences) {
        // It is the guide that calls, so it may not go before it is done.
        if (OnboardingWindowController *guide = onboarding_.release())
            guide->deleteLater();
        if (opensPreferences)
            openPreferences();
    });
    onboarding_->showWindow();
}

void AppDelegate::openOnboarding() {
    write(platform_.userDefaults(), settings::kOnboardingCompleted, false);
    showOnboarding();
}

void AppDelegate::showAbout() {
    if (!about_) {
        about_ = std::make_unique<AboutWindowController>(AboutWindowController::Services{
            .workspace = platform_.workspace(),
            .nativeWindow = platform_.nativeWindow(),
            .notifications = notifications_,
            .addresses = Addresses::ofThisBuild(),
            .showToast = [](const QString &message) { ToastWindow::show(message); }});
    }
    about_->show();
}

}  // namespace kestrelbay
