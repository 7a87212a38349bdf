#pragma once

#include "platform/ApplicationCatalog.h"

namespace kestrelbay {

class MacApplicationCatalog final : public ApplicationCatalog {
public:
    /// The folders of the system and of the user.
    MacApplicationCatalog();
    explicit MacApplicationCatalog(QStringList directories)
        : directories_(std::move(directories)) {}

    [[nodiscard]] std::vector<QImage> listIcons(const QStringList &applicationPaths,
                                                const ListIcons &icons) const override;
    [[nodiscard]] QString nameOfFile(const QString &applicationPath) const override;
    [[nodiscard]] QStringList applicationDirectories() const override { return directories_; }
    [[nodiscard]] QString applicationFilePattern() const override;
    /// The folders' own entries only, not those of folders within.
    [[nodiscard]] std::vector<InstalledApplication> installedApplications() const override;

private:
    QStringList directories_;
};

}  // namespace kestrelbay
