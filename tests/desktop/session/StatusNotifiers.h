#pragma once

#include <optional>
#include <vector>

#include <QDBusConnection>
#include <QString>
#include <QStringList>

namespace kestrelbay::desktop {

/// The session bus of a desktop as a panel sees it: who has an icon in the tray, and
/// which menu that icon has.
class StatusNotifiers {
public:
    struct Entry {
        int id = 0;
        QString title;     ///< without the mark of the letter that chooses it
        QString shortcut;  ///< as "Control+q"; empty for none
        bool isSeparator = false;
        bool operator==(const Entry &) const = default;
    };

    /// Throws std::runtime_error when the bus does not answer.
    explicit StatusNotifiers(const QString &busAddress);
    ~StatusNotifiers();
    StatusNotifiers(const StatusNotifiers &) = delete;
    StatusNotifiers &operator=(const StatusNotifiers &) = delete;

    /// Is there a panel for them?
    [[nodiscard]] bool hasHost() const;
    /// As ":1.5/StatusNotifierItem"; none when there is no watcher.
    [[nodiscard]] QStringList items() const;
    /// A property of the first item; invalid when there is none.
    [[nodiscard]] QVariant property(const QString &name) const;
    /// The menu of the first item; empty when there is none.
    [[nodiscard]] std::vector<Entry> menu() const;
    /// As "Quit [Control+q] | …", separators as "—".
    [[nodiscard]] static QString told(const std::vector<Entry> &menu);

private:
    struct Place {
        QString service;
        QString path;
    };
    [[nodiscard]] std::optional<Place> firstItem() const;

    QDBusConnection bus_;
};

}  // namespace kestrelbay::desktop
