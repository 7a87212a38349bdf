#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <sys/types.h>

#include <QDBusConnection>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QVariantList>

namespace kestrelbay::desktop {

/// What a screen reader learns of a program over the bus of AT-SPI, which the session starts
/// when it is asked for. To be there before the program: Qt looks for one when it starts. Each
/// answer is the program's of that moment.
class ScreenReader {
public:
    /// A thing in a program: a window, or what is in it.
    struct Place {
        QString service;
        QString path;
        bool operator==(const Place &) const = default;
    };
    /// As AT-SPI numbers them.
    enum class State : std::uint8_t {
        Checked = 4,
        Enabled = 8,
        Focusable = 11,
        Focused = 12,
        Selected = 23,
        Showing = 25,
    };
    struct Thing {
        Place place;
        std::uint32_t role = 0;
        QString name = {};
        QString description = {};
        /// What names it besides, as a popup list is named beside it.
        QString label = {};
        std::uint64_t states = 0;
        /// Those that are shown.
        std::vector<Thing> children = {};

        [[nodiscard]] bool is(State state) const {
            return (states >> static_cast<unsigned>(state) & 1U) != 0;
        }
        /// As "check box: Enable Mail (checked, focused)".
        [[nodiscard]] QString told() const;
        /// Itself and all below that has a name or takes the keyboard, in its order.
        [[nodiscard]] QStringList allTold() const;
        /// Itself and all below.
        [[nodiscard]] std::vector<const Thing *> all() const;
        /// What has the keyboard; null when nothing in it does.
        [[nodiscard]] const Thing *focused() const;
    };

    /// Throws std::runtime_error when the session has no such bus.
    explicit ScreenReader(const QString &sessionBusAddress);
    ~ScreenReader();
    ScreenReader(const ScreenReader &) = delete;
    ScreenReader &operator=(const ScreenReader &) = delete;

    /// The windows that the process shows.
    [[nodiscard]] std::vector<Thing> windowsOf(pid_t process) const;
    /// In the pixels of the program, from its corner of the screen.
    [[nodiscard]] QRect area(const Place &place) const;

private:
    [[nodiscard]] QVariantList ask(const Place &place, const QString &interface,
                                   const QString &member, const QVariantList &arguments = {}) const;
    [[nodiscard]] QString text(const Place &place, const QString &property) const;
    [[nodiscard]] std::vector<Place> children(const Place &place) const;
    [[nodiscard]] std::uint64_t states(const Place &place) const;
    [[nodiscard]] QString label(const Place &place) const;
    /// None when it is not shown.
    [[nodiscard]] std::optional<Thing> shown(const Place &place) const;

    QDBusConnection session_;
    QDBusConnection bus_;
};

}  // namespace kestrelbay::desktop
