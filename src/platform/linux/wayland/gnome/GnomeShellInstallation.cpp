#include "platform/linux/wayland/gnome/GnomeShellInstallation.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QByteArray>
#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QVariantMap>

#include "platform/linux/wayland/gnome/EnabledExtensions.h"

using namespace Qt::StringLiterals;

namespace kestrelbay::gnome {

namespace {

/// Earlier versions read extensions of another format, the first of them ...
constexpr int kFirstOfModules = 45;
/// ... that we know of being this one.
constexpr int kFirst = 42;

constexpr std::array kFiles{"extension.js"_L1, "metadata.json"_L1};

QDBusPendingCall askShell(const ShellExtension &shell, const QString &interface,
                          const QString &method, const QVariantList &arguments) {
    QDBusMessage question = QDBusMessage::createMethodCall(
        u"org.gnome.Shell"_s, u"/org/gnome/Shell"_s, interface, method);
    question.setArguments(arguments);
    question.setAutoStartService(false);
    return shell.connection().asyncCall(question,
                                        static_cast<int>(ShellExtension::kPatience.count()));
}

QDBusPendingCall askVersion(const ShellExtension &shell) {
    return askShell(shell, u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
                    {u"org.gnome.Shell"_s, u"ShellVersion"_s});
}

/// Waits for it.
QString versionIn(QDBusPendingCall answer) {
    answer.waitForFinished();
    return answer.reply().arguments().value(0).value<QDBusVariant>().variant().toString();
}

QByteArray contentsOf(const QString &path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

}  // namespace

GnomeShellInstallation::GnomeShellInstallation(std::shared_ptr<const ShellExtension> shell,
                                               const QString &dataFolder)
    : shell_(std::move(shell)),
      folder_(QDir(dataFolder)
                  .filePath(u"gnome-shell/extensions/"_s + QLatin1StringView(kIdentifier))) {}

bool GnomeShellInstallation::isExpected() const {
    return shell_->isThere() ||
           (isInstalled() && isExtensionEnabled(QLatin1StringView(kIdentifier)));
}

ExtensionState GnomeShellInstallation::state() const {
    if (shell_->isThere())
        return isRenewed_ ? ExtensionState::Renewed : ExtensionState::Enabled;
    if (hasFailed_)
        return ExtensionState::Failed;
    return isInstalled() && doesShellKnowIt() == false ? ExtensionState::AfterLogin
                                                       : ExtensionState::Missing;
}

void GnomeShellInstallation::install() {
    hasFailed_ = !copyFiles(resourcesFor(versionIn(askVersion(*shell_)))) ||
                 !enableExtension(QLatin1StringView(kIdentifier));
}

void GnomeShellInstallation::renew() {
    const auto ask = [this] {
        auto *const watcher = new QDBusPendingCallWatcher(askVersion(*shell_), &context_);
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, &context_, [this, watcher] {
            watcher->deleteLater();
            renewFor(versionIn(*watcher));
        });
    };
    if (isInstalled())
        QMetaObject::invokeMethod(&context_, ask, Qt::QueuedConnection);
}

void GnomeShellInstallation::renewFor(const QString &shellVersion) {
    const QString resources = resourcesFor(shellVersion);
    const bool isOther = std::ranges::any_of(kFiles, [&](QLatin1StringView name) {
        return contentsOf(resources + name) != contentsOf(QDir(folder_).filePath(name));
    });
    if (!resources.isEmpty() && isOther)
        isRenewed_ = copyFiles(resources);
}

QString GnomeShellInstallation::resourcesFor(const QString &shellVersion) {
    const int version = shellVersion.section(u'.', 0, 0).toInt();
    if (version < kFirst)
        return {};
    return version < kFirstOfModules ? u":/gnome-shell/imports/"_s : u":/gnome-shell/modules/"_s;
}

bool GnomeShellInstallation::isInstalled() const {
    return QFile::exists(QDir(folder_).filePath(kFiles.front()));
}

std::optional<bool> GnomeShellInstallation::doesShellKnowIt() const {
    QDBusPendingCall call = askShell(*shell_, u"org.gnome.Shell.Extensions"_s,
                                     u"GetExtensionInfo"_s, {QString::fromLatin1(kIdentifier)});
    call.waitForFinished();
    const QDBusMessage answer = call.reply();
    if (answer.type() != QDBusMessage::ReplyMessage || answer.signature() != "a{sv}"_L1)
        return std::nullopt;
    return !qdbus_cast<QVariantMap>(answer.arguments().first()).isEmpty();
}

bool GnomeShellInstallation::copyFiles(const QString &resources) const {
    if (resources.isEmpty() || !QDir().mkpath(folder_))
        return false;
    for (const QLatin1StringView name : kFiles) {
        const QByteArray contents = contentsOf(resources + name);
        QSaveFile file(QDir(folder_).filePath(name));
        if (contents.isEmpty() || !file.open(QFile::WriteOnly) ||
            file.write(contents) != contents.size() || !file.commit())
            return false;
    }
    return true;
}

}  // namespace kestrelbay::gnome
