#pragma once

#include <memory>

#include <QWidget>

#include "preferences/PreferencesServices.h"
#include "preferences/rules/ApplicationIconCache.h"
#include "preferences/rules/RuleDeletion.h"

namespace kestrelbay {

class ContainerViewController;
class Sheet;

/// The preferences window: a tab bar, and below it the view of the tab that is
/// chosen. In another language it is built anew, in place. Main thread.
class PreferencesWindowController final : public QObject {
    Q_OBJECT

public:
    explicit PreferencesWindowController(PreferencesServices services);

    /// Closed by the user, the same window comes back, at the tab that was shown
    /// last.
    void showWindow();

    /// Destroys what is in the window, unless that is in sight: it is built anew when the window
    /// is shown again, at the same tab. From the event loop only.
    void forgetViews();

    /// Shows the window at the row that tells whether hotkeys can work; while a sheet is
    /// open, only that, and the row when it has been closed.
    void switchToAccessibilityRow();

    /// Is a sheet open? Then sheetClosed() tells when it no longer is.
    [[nodiscard]] bool waitsForSheet();

    [[nodiscard]] QWidget *window() const { return window_.get(); }

Q_SIGNALS:
    /// After what the sheet was opened for.
    void sheetClosed();

private:
    void buildContainer();
    void showTab(int index);
    [[nodiscard]] Sheet *openSheet() const;
    void sheetFinished();
    void waitedSheetFinished();
    void closeCurrentChild();
    void rebuildUI();

    const PreferencesServices services_;
    ApplicationIconCache icons_{services_};
    RuleDeletion deletion_{services_};
    const std::unique_ptr<QWidget> window_;
    // Both belong to the window, and are null while its views are forgotten.
    ContainerViewController *container_ = nullptr;
    QWidget *currentChild_ = nullptr;
    int tab_ = 0;
    bool wasShown_ = false;
};

}  // namespace kestrelbay
