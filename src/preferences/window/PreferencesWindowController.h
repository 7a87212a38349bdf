#pragma once

#include <functional>
#include <memory>

#include <QObject>

#include "preferences/PreferencesServices.h"

class QWidget;

namespace kestrelbay {

class AdvancedSettingsViewController;
class ContainerViewController;
class Sheet;

/// The preferences window: a tab bar, and below it the view of the tab that is
/// chosen. In another language it is built anew, in place. Main thread.
class PreferencesWindowController final : public QObject {
    Q_OBJECT

public:
    /// Makes the view of the first tab, as a child of nobody. Outlives the window.
    using RulesViewFactory = std::function<QWidget *(const PreferencesServices &)>;

    explicit PreferencesWindowController(const PreferencesServices &services);
    PreferencesWindowController(PreferencesServices services, RulesViewFactory makeRulesView);
    ~PreferencesWindowController() override;

    /// Closed by the user, the same window comes back, at the tab that was shown
    /// last.
    void showWindow();

    /// Shows the window at the row that tells whether hotkeys can work; while a sheet is
    /// open, only that, and the row when it has been closed.
    void switchToAccessibilityRow();

    [[nodiscard]] QWidget *window() const;

private:
    void buildContainer();
    void showTab(int index);
    [[nodiscard]] Sheet *openSheet() const;
    void sheetFinished();
    void rejectSheets();
    void closeCurrentChild();
    void languageChanged();
    void rebuildUI();

    const PreferencesServices services_;
    const RulesViewFactory makeRulesView_;
    const std::unique_ptr<QWidget> window_;
    // Both belong to the window.
    ContainerViewController *container_ = nullptr;
    QWidget *currentChild_ = nullptr;
    AdvancedSettingsViewController *advanced_ = nullptr;
    bool wasShown_ = false;
};

}  // namespace kestrelbay
