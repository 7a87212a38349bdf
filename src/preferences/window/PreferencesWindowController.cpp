#include "preferences/window/PreferencesWindowController.h"

#include <utility>

#include <QPointer>
#include <QShortcut>
#include <QVBoxLayout>

#include "platform/NativeWindow.h"
#include "preferences/advanced/AdvancedSettingsViewController.h"
#include "preferences/rules/RulesViewController.h"
#include "preferences/window/TabBarView.h"
#include "settings/L.h"
#include "settings/Notifications.h"
#include "tasks/DispatchQueue.h"
#include "ui/windows/CenteredWindow.h"
#include "ui/windows/ProgramWindow.h"
#include "ui/windows/Sheet.h"

namespace kestrelbay {

namespace {

constexpr QSize kSize{704, 598};
constexpr QSize kMinimumSize{616, 483};
constexpr int kBarTop = 12;
constexpr QSize kBarSize{330, 32};
constexpr int kBarToContent = 8;
constexpr int kAdvancedTab = 1;

std::unique_ptr<QWidget> makeWindow() {
    auto window = std::make_unique<ProgramWindow>(Qt::Window);
    window->setLayoutDirection(Qt::LeftToRight);  // as both languages are
    window->setMinimumSize(kMinimumSize);
    window->resize(kSize);
    auto *const layout = new QVBoxLayout(window.get());
    layout->setContentsMargins({});
    // Not those of QKeySequence, which are none on a desktop that Qt does not know.
    // Ctrl+Q ends other programs, but here all hotkeys would go with the window.
    for (const Qt::Key key : {Qt::Key_W, Qt::Key_Q})
        QObject::connect(new QShortcut(Qt::CTRL | key, window.get()), &QShortcut::activated,
                         window.get(), &QWidget::close);
    return window;
}

}  // namespace

/// What fills the window: the tab bar, and below it the room for the view of one tab.
class ContainerViewController final : public QWidget {
public:
    explicit ContainerViewController(QWidget *parent)
        : QWidget(parent), tabBarView_(new TabBarView(this)), contentArea_(new QVBoxLayout) {
        tabBarView_->setFixedSize(kBarSize);
        auto *const column = new QVBoxLayout(this);
        column->setContentsMargins(0, kBarTop, 0, 0);
        column->setSpacing(kBarToContent);
        column->addWidget(tabBarView_, 0, Qt::AlignHCenter);
        column->addLayout(contentArea_, 1);
    }

    [[nodiscard]] TabBarView *tabBarView() const { return tabBarView_; }
    [[nodiscard]] QVBoxLayout *contentArea() const { return contentArea_; }

private:
    TabBarView *tabBarView_;
    QVBoxLayout *contentArea_;
};

PreferencesWindowController::PreferencesWindowController(PreferencesServices services)
    : services_(std::move(services)), window_(makeWindow()) {
    window_->setWindowTitle(L::preferencesTitle());
    buildContainer();
    connect(&services_.notifications, &Notifications::languageDidChange, this,
            &PreferencesWindowController::rebuildUI);
}

void PreferencesWindowController::showWindow() {
    if (!container_)
        buildContainer();
    if (!wasShown_)
        centerOnActiveScreen(*window_, services_.nativeWindow);
    wasShown_ = true;
    if (!window_->isVisible())
        deletion_.forget();
    if (window_->isMinimized())
        window_->setWindowState(window_->windowState() & ~Qt::WindowMinimized);
    window_->show();
    window_->raise();
    window_->activateWindow();
    services_.nativeWindow.bringProgramForward(window_->winId());
}

void PreferencesWindowController::forgetViews() {
    if (window_->isVisible() || openSheet())
        return;
    delete std::exchange(container_, nullptr);
    currentChild_ = nullptr;
    icons_.forget();
}

void PreferencesWindowController::switchToAccessibilityRow() {
    showWindow();
    if (Sheet *const sheet = openSheet()) {
        // What is typed there must not go with the tab.
        connect(sheet, &QDialog::finished, this, &PreferencesWindowController::sheetFinished,
                Qt::UniqueConnection);
        sheet->raise();
        sheet->activateWindow();
        return;
    }
    container_->tabBarView()->select(kAdvancedTab);
    showTab(kAdvancedTab);
    // Its place is known only when the view that was just made is laid out.
    services_.mainQueue.async([self = QPointer(this)] {
        QWidget *const shown = self ? self->currentChild_ : nullptr;
        if (auto *const advanced = qobject_cast<AdvancedSettingsViewController *>(shown))
            advanced->highlightAccessibilityRow();
    });
}

Sheet *PreferencesWindowController::openSheet() const {
    for (Sheet *const sheet : window_->findChildren<Sheet *>()) {
        if (sheet->isVisible())
            return sheet;
    }
    return nullptr;
}

void PreferencesWindowController::sheetFinished() {
    // What it was opened for is carried out first, in the tab that it belongs to.
    services_.mainQueue.async([self = QPointer(this)] {
        if (self)
            self->switchToAccessibilityRow();
    });
}

bool PreferencesWindowController::waitsForSheet() {
    Sheet *const sheet = openSheet();
    if (sheet)
        connect(sheet, &QDialog::finished, this, &PreferencesWindowController::waitedSheetFinished,
                Qt::UniqueConnection);
    return sheet;
}

void PreferencesWindowController::waitedSheetFinished() {
    services_.mainQueue.async([self = QPointer(this)] {
        if (self)
            Q_EMIT self->sheetClosed();
    });
}

void PreferencesWindowController::buildContainer() {
    container_ = new ContainerViewController(window_.get());
    window_->layout()->addWidget(container_);
    container_->show();
    container_->tabBarView()->select(tab_);
    connect(container_->tabBarView(), &TabBarView::onSelect, this,
            &PreferencesWindowController::showTab);
    showTab(tab_);
}

void PreferencesWindowController::closeCurrentChild() {
    if (!currentChild_)
        return;
    while (Sheet *const sheet = openSheet())
        sheet->reject();
    currentChild_->hide();
    // One of its controls may be what leads here.
    currentChild_->deleteLater();
    currentChild_ = nullptr;
}

void PreferencesWindowController::showTab(int index) {
    closeCurrentChild();
    tab_ = index;
    if (index == kAdvancedTab)
        currentChild_ = new AdvancedSettingsViewController(services_);
    else
        currentChild_ = new RulesViewController(services_, icons_, deletion_);
    container_->contentArea()->addWidget(currentChild_);
    currentChild_->show();
}

void PreferencesWindowController::rebuildUI() {
    window_->setWindowTitle(L::preferencesTitle());
    if (!container_)
        return;
    const bool wasVisible = window_->isVisible();
    const QWidget *const focused = window_->focusWidget();
    const QString focusedName = focused ? focused->objectName() : QString();

    // All of it is one change for the user.
    window_->setUpdatesEnabled(false);
    closeCurrentChild();
    container_->hide();
    window_->layout()->removeWidget(container_);
    container_->deleteLater();
    buildContainer();
    if (!focusedName.isEmpty()) {
        if (auto *const again = container_->findChild<QWidget *>(focusedName))
            again->setFocus(Qt::OtherFocusReason);
    }
    window_->setUpdatesEnabled(true);

    if (wasVisible) {
        window_->raise();
        window_->activateWindow();
    }
}

}  // namespace kestrelbay
