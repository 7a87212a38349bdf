#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include <QByteArray>
#include <QJsonArray>
#include <QString>

#include "platform/linux/wayland/windows/Desktop.h"
#include "platform/linux/wayland/windows/LastUsed.h"

namespace kestrelbay::plasma {

/// The windows that the script tells of, by numbers.
class WindowList {
public:
    /// The last used one first, and those of which no use is known as they are told. None of what
    /// is no list.
    [[nodiscard]] std::vector<wayland::DesktopWindow> take(const QByteArray &json);

    /// The window of that name has the focus now.
    void noteUse(const QString &name) { used_.note(numberOf(name)); }

    /// The script's names for these numbers, without those that are not there any more.
    [[nodiscard]] QJsonArray namesOf(std::span<const std::int64_t> windows) const;

private:
    [[nodiscard]] std::int64_t numberOf(const QString &name);

    std::map<QString, std::int64_t> numbers_;
    wayland::LastUsed used_;
    std::int64_t last_ = 0;
};

}  // namespace kestrelbay::plasma
