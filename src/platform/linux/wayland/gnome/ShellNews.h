#pragma once

#include <QDBusServiceWatcher>
#include <QObject>
#include <QString>

#include "platform/linux/wayland/gnome/ShellExtension.h"

namespace kestrelbay::gnome {

/// What the extension tells unasked, as signals on the thread that this was made on. They need an
/// event loop there.
class ShellNews final : public QObject {
    Q_OBJECT

public:
    explicit ShellNews(const ShellExtension &shell);

Q_SIGNALS:
    /// Once a press.
    void pressed(const QString &accelerator);
    /// The user may have bound other keys of the desktop's.
    void bindingsChanged();
    /// A window is there that was not.
    void windowShown();
    /// It is enabled now, knowing nothing of this program, or disabled.
    void came();
    void gone();

private:
    QDBusServiceWatcher watcher_;
};

}  // namespace kestrelbay::gnome
