#pragma once

#include <map>

#include "fakes/Journal.h"
#include "platform/ApplicationCatalog.h"

namespace kestrelbay {

class FakeApplicationCatalog final : public ApplicationCatalog {
public:
    [[nodiscard]] QIcon icon(const QString &applicationPath) const override {
        iconRequests_.add(applicationPath);
        const auto found = applications_.find(applicationPath);
        return found == applications_.end() ? genericIcon_ : found->second.icon;
    }
    [[nodiscard]] QString displayName(const QString &applicationPath) const override {
        const auto found = applications_.find(applicationPath);
        return found == applications_.end() ? QString() : found->second.name;
    }
    [[nodiscard]] QStringList applicationDirectories() const override { return directories_; }

    // For the test, before other threads ask:
    void add(const QString &path, const QString &name, const QIcon &icon = {}) {
        applications_.insert_or_assign(path, Application{.name = name, .icon = icon});
    }
    void setGenericIcon(const QIcon &icon) { genericIcon_ = icon; }
    void setApplicationDirectories(const QStringList &directories) { directories_ = directories; }
    [[nodiscard]] QStringList iconRequests() const { return iconRequests_.lines(); }

private:
    struct Application {
        QString name;
        QIcon icon;
    };

    std::map<QString, Application> applications_;
    QIcon genericIcon_;
    QStringList directories_;
    mutable Journal iconRequests_;
};

}  // namespace kestrelbay
