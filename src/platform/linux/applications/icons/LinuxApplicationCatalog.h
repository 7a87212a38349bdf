#pragma once

#include <functional>
#include <memory>

#include "platform/ApplicationCatalog.h"

namespace kestrelbay {

class ApplicationIndex;

/// Applications by their desktop entries.
class LinuxApplicationCatalog : public ApplicationCatalog {
public:
    /// Gives the newest index there is, on any thread.
    using Index = std::function<std::shared_ptr<const ApplicationIndex>()>;

    /// What is installed is asked of the index: to read thousands of entries takes longer
    /// than anybody should wait for a list.
    explicit LinuxApplicationCatalog(Index index) : index_(std::move(index)) {}

    [[nodiscard]] std::vector<QImage> listIcons(const QStringList &applicationPaths,
                                                const ListIcons &icons) const override;
    [[nodiscard]] QString nameOfFile(const QString &applicationPath) const override;
    [[nodiscard]] QStringList applicationDirectories() const override;
    [[nodiscard]] QString applicationFilePattern() const override;
    [[nodiscard]] std::vector<InstalledApplication> installedApplications() const override;

private:
    Index index_;
};

}  // namespace kestrelbay
