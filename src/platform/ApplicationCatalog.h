#pragma once

#include <QIcon>
#include <QString>
#include <QStringList>

namespace kestrelbay {

/// What is known of an installed application without running it. Any thread.
class ApplicationCatalog {
public:
    virtual ~ApplicationCatalog() = default;

    /// The icon to show for the application at this path; the system's generic
    /// application icon when it has none of its own.
    [[nodiscard]] virtual QIcon icon(const QString &applicationPath) const = 0;

    /// Its name in the user's language; empty when there is no application at
    /// this path.
    [[nodiscard]] virtual QString displayName(const QString &applicationPath) const = 0;

    /// The folders in which applications are installed, those that win first.
    [[nodiscard]] virtual QStringList applicationDirectories() const = 0;
};

}  // namespace kestrelbay
