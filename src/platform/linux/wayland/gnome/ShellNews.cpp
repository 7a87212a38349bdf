#include "platform/linux/wayland/gnome/ShellNews.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::gnome {

ShellNews::ShellNews(const ShellExtension &shell)
    : watcher_(ShellExtension::serviceName(), shell.connection(),
               QDBusServiceWatcher::WatchForOwnerChange) {
    QDBusConnection connection = shell.connection();
    connection.connect(ShellExtension::serviceName(), ShellExtension::objectPath(),
                       ShellExtension::interfaceName(), u"Pressed"_s, this,
                       SIGNAL(pressed(QString)));
    connection.connect(ShellExtension::serviceName(), ShellExtension::objectPath(),
                       ShellExtension::interfaceName(), u"BindingsChanged"_s, this,
                       SIGNAL(bindingsChanged()));
    connection.connect(ShellExtension::serviceName(), ShellExtension::objectPath(),
                       ShellExtension::interfaceName(), u"WindowShown"_s, this,
                       SIGNAL(windowShown()));
    connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString & /*service*/, const QString & /*before*/, const QString &now) {
                if (now.isEmpty())
                    Q_EMIT gone();
                else
                    Q_EMIT came();
            });
}

}  // namespace kestrelbay::gnome
