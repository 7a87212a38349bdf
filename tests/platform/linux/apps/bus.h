#pragma once

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>

#include <QString>
#include <QStringList>

#include "platform/linux/glib/BackgroundLoop.h"
#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay::testing {

/// What D-Bus activatable applications offer.
inline constexpr const char *kApplicationXml =
    "<node><interface name='org.freedesktop.Application'>"
    "<method name='Activate'><arg type='a{sv}' direction='in'/></method>"
    "<method name='Open'><arg type='as' direction='in'/><arg type='a{sv}' direction='in'/></method>"
    "</interface></node>";

/// A program on the session bus that owns one name and takes every call.
class BusService {
public:
    enum class Manner {
        Answers,
        Refuses,
        KeepsSilent,
        /// Leaves the bus over the first call.
        Dies,
    };

    /// Waits until the name is there.
    BusService(const QString &name, const QString &path, const char *interfaceXml, Manner manner);
    ~BusService();

    /// "Method(arguments in GVariant's text form)", in order.
    [[nodiscard]] QStringList calls() const;

private:
    void own(const QString &name, const QString &path, const char *interfaceXml);
    static void onCall(GDBusConnection *connection, const char *sender, const char *path,
                       const char *interface, const char *method, GVariant *parameters,
                       GDBusMethodInvocation *invocation, gpointer data);

    const Manner manner_;
    mutable std::mutex mutex_;
    std::condition_variable owned_;
    bool isOwned_ = false;
    QStringList calls_;
    GObjectPtr<GDBusConnection> connection_;
    std::unique_ptr<BackgroundLoop> loop_;
};

}  // namespace kestrelbay::testing
