#pragma once

#include <memory>

#include <QObject>

class QMenu;
class QSystemTrayIcon;

namespace kestrelbay {

class StatusArea;

/// The program's icon in the menu bar or tray: from the moment on that there is a
/// place for it.
class StatusItem final : public QObject {
    Q_OBJECT

public:
    /// All have to outlive it. A click on the icon opens the menu.
    StatusItem(StatusArea &area, QMenu &menu);
    ~StatusItem() override;

    /// Shows whether the shortcuts are enabled.
    void setShortcutsEnabled(bool enabled);

    [[nodiscard]] bool isVisible() const { return icon_ != nullptr; }

private:
    void appear();
    void updateIcon();

    StatusArea &area_;
    QMenu &menu_;
    bool shortcutsEnabled_ = true;
    std::unique_ptr<QSystemTrayIcon> icon_;
};

}  // namespace kestrelbay
