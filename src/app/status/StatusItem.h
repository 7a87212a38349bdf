#pragma once

#include <memory>
#include <optional>

#include <QIcon>
#include <QObject>
#include <QString>

class QMenu;
class QSystemTrayIcon;

namespace kestrelbay {

class SystemTray;

/// The icon among those of the programs that run: a bolt, struck through while the
/// shortcuts are disabled. Drawn afresh for every size. It is light on a dark
/// ground and the other way round, with a faint edge of the other colour, since
/// not every desktop tells what its ground is; without any `onDark` it is a mask
/// that the system tints. A name is sent along for panels that draw it out of the icon theme.
[[nodiscard]] QIcon statusIcon(bool enabled, std::optional<bool> onDark,
                               const QString &themeName = {});

/// The name under which packages install the same drawing.
[[nodiscard]] QString statusIconName(bool enabled);

/// The program's icon in the menu bar or tray: from the moment on that there is a
/// place for it.
class StatusItem final : public QObject {
    Q_OBJECT

public:
    /// All have to outlive it. A click on the icon opens the menu.
    StatusItem(SystemTray &area, QMenu &menu);
    ~StatusItem() override;

    /// Shows whether the shortcuts are enabled.
    void setShortcutsEnabled(bool enabled);

private:
    void appear();
    void updateIcon();

    SystemTray &area_;
    QMenu &menu_;
    bool shortcutsEnabled_ = true;
    std::unique_ptr<QSystemTrayIcon> icon_;
};

}  // namespace kestrelbay
