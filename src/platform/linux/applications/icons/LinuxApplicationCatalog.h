#pragma once

#include "platform/ApplicationCatalog.h"

namespace kestrelbay {

/// Applications by their desktop entries. Holds nothing.
class LinuxApplicationCatalog : public ApplicationCatalog {
public:
    [[nodiscard]] std::vector<QImage> listIcons(const QStringList &applicationPaths,
                                                const ListIcons &icons) const override;
    [[nodiscard]] QString nameOfFile(const QString &applicationPath) const override;
    [[nodiscard]] QStringList applicationDirectories() const override;
    [[nodiscard]] QString applicationFilePattern() const override;
    [[nodiscard]] std::vector<InstalledApplication> installedApplications(
        const ListIcons &icons) const override;
};

}  // namespace kestrelbay
