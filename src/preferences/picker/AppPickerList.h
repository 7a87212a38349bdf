#pragma once

#include <vector>

#include <QLocale>
#include <QString>

#include "platform/ApplicationCatalog.h"

namespace kestrelbay {

/// The applications to choose from, by name, and the search among them. A plain value;
/// made on a thread that has the time.
class AppPickerList {
public:
    AppPickerList() = default;
    /// Sorts them by name as the user's language does, without regard to case. Those of
    /// one name stay in the order in which they came.
    AppPickerList(std::vector<InstalledApplication> applications, const QLocale &locale);

    [[nodiscard]] const std::vector<InstalledApplication> &applications() const {
        return applications_;
    }

    /// Indices into applications(), in order, of those whose name or file name contains
    /// the text, in any case; of all when there is nothing in it but spaces.
    [[nodiscard]] std::vector<int> matching(const QString &searchText) const;

private:
    /// What the search looks at, written in one case.
    struct Folded {
        QString name;
        QString fileName;
    };

    QLocale locale_;
    std::vector<InstalledApplication> applications_;
    std::vector<Folded> folded_;
};

}  // namespace kestrelbay
