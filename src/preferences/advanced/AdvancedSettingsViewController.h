#pragma once

#include <functional>
#include <utility>

#include <QWidget>

#include "platform/DesktopExtension.h"
#include "platform/EventTap.h"
#include "preferences/PreferencesServices.h"

class QScrollArea;
class QVBoxLayout;

namespace kestrelbay {

class SettingRow;

/// The settings of the whole program, each a row, and last of all whether hotkeys
/// can work. Every control writes its setting at once. Main thread.
class AdvancedSettingsViewController final : public QWidget {
    Q_OBJECT

public:
    explicit AdvancedSettingsViewController(PreferencesServices services);

    /// Null until the view was shown.
    [[nodiscard]] SettingRow *accessibilityRow() const { return accessibilityRow_; }

    /// Builds the row anew, by whether there is a tap now.
    void refreshAccessibilityRow();

    /// Draws the eye and the keyboard focus to the row, if it is there.
    void highlightAccessibilityRow();

    /// Done instead of restarting the program. For tests.
    void setRestart(std::function<void()> restart) { restart_ = std::move(restart); }

protected:
    void showEvent(QShowEvent *event) override;

private:
    void addRow(SettingRow *row);
    [[nodiscard]] SettingRow *makeLaunchAtLoginRow();
    [[nodiscard]] SettingRow *makeConfigRow() const;
    [[nodiscard]] SettingRow *makeAccessibilityRow();
    // In the place of that one ...
    [[nodiscard]] SettingRow *makeGrantedRow(const EventTap &tap);
    /// ... where an extension can be installed, or was.
    [[nodiscard]] SettingRow *makeExtensionRow(ExtensionState state, const QString &text);
    /// Where the system has no place to give the permission, only looks again.
    void openAccessibility();
    void applicationStateChanged(Qt::ApplicationState state);
    void appDidBecomeActive();
    void showConfigInFinder() const;

    const PreferencesServices services_;
    std::function<void()> restart_;
    QScrollArea *scrollArea_;
    QVBoxLayout *mainStack_;
    SettingRow *accessibilityRow_ = nullptr;
};

}  // namespace kestrelbay
