#include "preferences/advanced/AdvancedSettingsViewController.h"

#include <QGuiApplication>
#include <QPushButton>
#include <QShowEvent>
#include <QVBoxLayout>

#include "hotkeys/ShortcutManager.h"
#include "platform/DesktopExtension.h"
#include "platform/EventTap.h"
#include "platform/SystemSettings.h"
#include "platform/Workspace.h"
#include "preferences/advanced/Restart.h"
#include "preferences/advanced/SettingPopup.h"
#include "preferences/advanced/SettingRow.h"
#include "settings/L.h"
#include "settings/LaunchAtLogin.h"
#include "settings/Notifications.h"
#include "settings/SettingsKeys.h"
#include "ui/look/Fonts.h"
#include "ui/widgets/PlainScrollArea.h"
#include "ui/widgets/Switch.h"

namespace kestrelbay {

namespace {

constexpr QSize kSize{640, 480};
constexpr QMargins kInsets{28, 24, 28, 24};
constexpr int kRowSpacing = 20;
constexpr int kButtonFont = 12;
/// What the style leaves around a text is little.
constexpr int kButtonPadding = 12;

QPushButton *makeButton(const QString &title, const QString &name) {
    auto *const button = new QPushButton(title);
    button->setObjectName(name);
    button->setFont(systemFont(kButtonFont));
    button->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    button->setMinimumWidth(button->sizeHint().width() + kButtonPadding);
    button->setAutoDefault(false);
    return button;
}

QString wordsOfAccess(const EventTap &tap) {
    if (tap.areKeysWithheld())
        return L::accessWithheld();
    return tap.sourceName().isEmpty() ? L::accessGranted()
                                      : L::accessGrantedThrough(tap.sourceName());
}

}  // namespace

AdvancedSettingsViewController::AdvancedSettingsViewController(PreferencesServices services)
    : services_(std::move(services)), restart_(&restartProgram), mainStack_(new QVBoxLayout) {
    resize(kSize);
    mainStack_->setContentsMargins(kInsets);
    mainStack_->setSpacing(kRowSpacing);
    // Below the rows. An alignment would have every text be as high as in one line.
    mainStack_->addStretch(1);
    auto *const column = new QWidget;
    column->setLayout(mainStack_);

    scrollArea_ = new PlainScrollArea(column, this);
    scrollArea_->setWidgetResizable(true);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(scrollArea_);

    // What the system does counts, not what was asked of it last.
    write(services_.defaults, settings::kLaunchAtLogin,
          services_.launchAtLogin.isLaunchAtLoginEnabled());
    addRow(makeLaunchAtLoginRow());
    addRow(new SettingRow(L::language(), L::languageText(), makeLanguagePopup(services_)));
    addRow(new SettingRow(L::sound(), L::soundText(), makeSoundPopup(services_)));
    addRow(new SettingRow(L::launchToast(), L::launchToastText(), makeToastPopup(services_)));
    addRow(makeConfigRow());

    for (const auto news :
         {&Notifications::accessibilityGranted, &Notifications::keyAccessDidChange})
        connect(&services_.notifications, news, this, [this] {
            // At the next visit it looks again anyway.
            if (isVisible())
                refreshAccessibilityRow();
        });
}

void AdvancedSettingsViewController::addRow(SettingRow *row) {
    mainStack_->insertWidget(mainStack_->count() - 1, row);
}

SettingRow *AdvancedSettingsViewController::makeLaunchAtLoginRow() {
    auto *const button = new Switch;
    button->setObjectName(QStringLiteral("launchAtLogin"));
    button->setChecked(read(services_.defaults, settings::kLaunchAtLogin));
    connect(button, &QAbstractButton::toggled, this, [this](bool on) {
        // A failure is told before it returns, and this may be gone by then.
        LaunchAtLogin &launchAtLogin = services_.launchAtLogin;
        write(services_.defaults, settings::kLaunchAtLogin, on);
        launchAtLogin.setLaunchAtLogin(on);
    });
    return new SettingRow(L::launchAtLogin(), L::launchAtLoginText(), button);
}

SettingRow *AdvancedSettingsViewController::makeConfigRow() const {
    QPushButton *const button = makeButton(L::configFolderShow(), QStringLiteral("configFolder"));
    connect(button, &QPushButton::clicked, this,
            &AdvancedSettingsViewController::showConfigInFinder);
    return new SettingRow(L::configFolder(), services_.manager.storageDirectory(), button);
}

SettingRow *AdvancedSettingsViewController::makeAccessibilityRow() {
    if (const EventTap *const tap = services_.manager.eventTap())
        return makeGrantedRow(*tap);
    if (services_.desktopExtension &&
        services_.manager.tapProblem() == TapProblem::ExtensionMissing) {
        const ExtensionState state = services_.desktopExtension->state();
        return makeExtensionRow(state, L::extensionText(state));
    }
    QPushButton *const button =
        makeButton(L::accessOpenSettings(), QStringLiteral("accessibility"));
    connect(button, &QPushButton::clicked, this,
            &AdvancedSettingsViewController::openAccessibility);
    return new SettingRow(L::accessTitle(), L::accessMissing(services_.manager.tapProblem()),
                          button);
}

SettingRow *AdvancedSettingsViewController::makeGrantedRow(const EventTap &tap) {
    const QString words = wordsOfAccess(tap);
    const ExtensionState state = services_.desktopExtension && !tap.areKeysWithheld()
                                     ? services_.desktopExtension->state()
                                     : ExtensionState::Enabled;
    if (state == ExtensionState::Enabled)
        return new SettingRow(L::accessTitle(), words, nullptr);
    const QString more =
        state == ExtensionState::Missing ? L::extensionForWindows() : L::extensionText(state);
    return makeExtensionRow(state, words + u'\n' + more);
}

SettingRow *AdvancedSettingsViewController::makeExtensionRow(ExtensionState state,
                                                             const QString &text) {
    if (state == ExtensionState::AfterLogin || state == ExtensionState::Renewed)
        return new SettingRow(L::accessTitle(), text, nullptr);
    QPushButton *const button = makeButton(L::extensionInstall(), QStringLiteral("extension"));
    connect(button, &QPushButton::clicked, this, [this] {
        services_.desktopExtension->install();
        if (!services_.manager.eventTap())
            services_.manager.reinstallEventTap();
        refreshAccessibilityRow();
    });
    return new SettingRow(L::accessTitle(), text, button);
}

void AdvancedSettingsViewController::refreshAccessibilityRow() {
    bool hadFocus = false;
    if (accessibilityRow_) {
        hadFocus = accessibilityRow_->control() && accessibilityRow_->control()->hasFocus();
        accessibilityRow_->hide();
        mainStack_->removeWidget(accessibilityRow_);
        // Its own button may be what leads here.
        accessibilityRow_->deleteLater();
    }
    accessibilityRow_ = makeAccessibilityRow();
    addRow(accessibilityRow_);
    accessibilityRow_->show();
    if (hadFocus && accessibilityRow_->control())
        accessibilityRow_->control()->setFocus(Qt::OtherFocusReason);
}

void AdvancedSettingsViewController::highlightAccessibilityRow() {
    if (!accessibilityRow_)
        return;
    // The place of a row that was just made is known only now.
    scrollArea_->widget()->layout()->activate();
    scrollArea_->ensureWidgetVisible(accessibilityRow_, 0, kInsets.bottom());
    if (QWidget *const control = accessibilityRow_->control())
        control->setFocus(Qt::OtherFocusReason);
    accessibilityRow_->flash(services_.timers);
}

void AdvancedSettingsViewController::openAccessibility() {
    if (services_.systemSettings.openAccessibilityPane()) {
        connect(qGuiApp, &QGuiApplication::applicationStateChanged, this,
                &AdvancedSettingsViewController::applicationStateChanged, Qt::UniqueConnection);
        return;
    }
    services_.manager.reinstallEventTap();
    refreshAccessibilityRow();
    // Without it nobody would see that anything was done.
    if (!services_.manager.isAccessibilityGranted())
        highlightAccessibilityRow();
}

void AdvancedSettingsViewController::applicationStateChanged(Qt::ApplicationState state) {
    if (state == Qt::ApplicationActive)
        appDidBecomeActive();
}

void AdvancedSettingsViewController::appDidBecomeActive() {
    disconnect(qGuiApp, &QGuiApplication::applicationStateChanged, this, nullptr);
    refreshAccessibilityRow();
    if (services_.manager.isAccessibilityGranted())
        services_.manager.reinstallEventTap();
    else
        openRestartSheet(this, restart_);
}

void AdvancedSettingsViewController::showConfigInFinder() const {
    services_.workspace.showFolder(services_.manager.storageDirectory());
}

void AdvancedSettingsViewController::showEvent(QShowEvent *event) {
    QWidget::showEvent(event);
    if (!event->spontaneous())
        refreshAccessibilityRow();
}

}  // namespace kestrelbay
