#pragma once

#include <unistd.h>

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include <QByteArray>
#include <QByteArrayList>
#include <QString>
#include <QUrl>

#include <gtest/gtest.h>

#include "platform/linux/wayland/sway/FakeSway.h"
#include "platform/linux/wayland/sway/SwayEvents.h"
#include "platform/linux/wayland/sway/windows/SwayDesktop.h"
#include "platform/linux/wayland/windows/DesktopApplication.h"

namespace kestrelbay::sway {

inline QByteArray window(int id, const QByteArray &appId, bool isFocused = false) {
    return R"({"type": "con", "pid": )" + QByteArray::number(::getpid()) + R"(, "id": )" +
           QByteArray::number(id) + R"(, "app_id": ")" + appId + R"(", "focused": )" +
           (isFocused ? "true" : "false") + '}';
}

inline QByteArray workspace(const QByteArray &name, const QByteArrayList &windows) {
    return R"({"type": "workspace", "name": ")" + name + R"(", "nodes": [)" + windows.join(',') +
           "]}";
}

/// A desktop, and the sway that it asks.
class SwayDesktopFixture : public ::testing::Test {
protected:
    void show(const QByteArrayList &workspaces) {
        const std::lock_guard lock(mutex_);
        tree_ = R"({"nodes": [)" + workspaces.join(',') + "]}";
    }
    [[nodiscard]] QByteArrayList takeCommands() {
        const std::lock_guard lock(mutex_);
        return std::exchange(commands_, {});
    }
    [[nodiscard]] int treesAsked() {
        const std::lock_guard lock(mutex_);
        return treesAsked_;
    }
    [[nodiscard]] std::vector<std::int64_t> order() { return idsOf(desktop_->read()); }
    static std::vector<std::int64_t> idsOf(const std::vector<wayland::DesktopWindow> &windows) {
        std::vector<std::int64_t> ids;
        for (const wayland::DesktopWindow &window : windows)
            ids.push_back(window.id);
        return ids;
    }
    [[nodiscard]] std::unique_ptr<wayland::DesktopApplication> application(const QString &path) {
        const wayland::Picture picture = matches_.picture(desktop_->readAsked(), index_);
        for (const ApplicationGroup &group : wayland::groupApplications(picture)) {
            auto found = std::make_unique<wayland::DesktopApplication>(desktop_, picture, group);
            if (found->bundleURL() == QUrl::fromLocalFile(path))
                return found;
        }
        return nullptr;
    }

private:
    std::optional<QByteArray> answer(const IpcMessage &message) {
        const std::lock_guard lock(mutex_);
        if (message.type == MessageType::GetTree) {
            ++treesAsked_;
            return toBytes({message.type, tree_});
        }
        if (message.type == MessageType::RunCommand)
            commands_.append(message.payload);
        return toBytes({message.type, R"({"success": true})"});
    }

    std::mutex mutex_;
    QByteArray tree_ = "{}";
    QByteArrayList commands_;
    int treesAsked_ = 0;

protected:
    kestrelbay::testing::FakeSway sway_{
        [this](const IpcMessage &message) { return answer(message); }};

    static DesktopEntry entry(const QString &name) {
        DesktopEntry made;
        made.path = QStringLiteral("/apps/%1.desktop").arg(name);
        made.id = name;
        made.startupWmClass = name;
        return made;
    }

    const std::shared_ptr<const ApplicationIndex> index_ = std::make_shared<const ApplicationIndex>(
        std::vector{entry(QStringLiteral("a")), entry(QStringLiteral("b"))});
    const std::shared_ptr<SwayEvents> events_ = std::make_shared<SwayEvents>(sway_.socketPath());
    const std::shared_ptr<SwayDesktop> desktop_ = std::make_shared<SwayDesktop>(events_);
    wayland::WindowMatches matches_{[](std::int64_t, ProcessFacts &) {}};
};

}  // namespace kestrelbay::sway
