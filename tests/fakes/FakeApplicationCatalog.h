#pragma once

#include <map>
#include <utility>
#include <vector>

#include <QIcon>
#include <QPainter>

#include "fakes/Journal.h"
#include "platform/ApplicationCatalog.h"

namespace kestrelbay {

class FakeApplicationCatalog final : public ApplicationCatalog {
public:
    /// Empty squares for null icons.
    [[nodiscard]] std::vector<QImage> listIcons(const QStringList &applicationPaths,
                                                const ListIcons &icons) const override {
        listIconRequests_.add(applicationPaths.join(u' '));
        std::vector<QImage> images;
        for (const QString &path : applicationPaths) {
            const auto found = applications_.find(path);
            const QIcon &icon = found == applications_.end() ? genericIcon_ : found->second.icon;
            QImage image(icons.pixels, icons.pixels, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            QPainter painter(&image);
            icon.paint(&painter, image.rect());
            painter.end();
            images.push_back(image);
        }
        return images;
    }
    [[nodiscard]] QString nameOfFile(const QString &applicationPath) const override {
        const auto found = applications_.find(applicationPath);
        return found == applications_.end() ? QString() : found->second.name;
    }
    [[nodiscard]] QStringList applicationDirectories() const override { return directories_; }
    [[nodiscard]] QString applicationFilePattern() const override {
        return QStringLiteral("*.application");
    }
    [[nodiscard]] std::vector<InstalledApplication> installedApplications() const override {
        return installed_;
    }

    // For the test, before other threads ask:
    void add(const QString &path, const QString &name, const QIcon &icon = {}) {
        applications_.insert_or_assign(path, Application{.name = name, .icon = icon});
    }
    void setGenericIcon(const QIcon &icon) { genericIcon_ = icon; }
    void setApplicationDirectories(const QStringList &directories) { directories_ = directories; }
    /// What is listed, in the order in which it is found; add() lists nothing.
    void setInstalledApplications(std::vector<InstalledApplication> applications) {
        installed_ = std::move(applications);
    }
    /// A line for each list: its paths.
    [[nodiscard]] QStringList listIconRequests() const { return listIconRequests_.lines(); }

private:
    struct Application {
        QString name;
        QIcon icon;
    };

    std::map<QString, Application> applications_;
    QIcon genericIcon_;
    QStringList directories_;
    std::vector<InstalledApplication> installed_;
    mutable Journal listIconRequests_;
};

}  // namespace kestrelbay
