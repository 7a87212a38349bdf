#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include <QAbstractListModel>
#include <QImage>
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

/// The rows of the app picker: those of the list that match the search.
class AppPickerModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void setList(std::shared_ptr<const AppPickerList> list);
    /// Of the applications of the list next to those that have icons already.
    void addIcons(std::vector<QImage> icons);
    /// How many of them, from the first on, have icons.
    [[nodiscard]] std::size_t iconCount() const { return icons_.size(); }
    [[nodiscard]] const AppPickerList &list() const { return *list_; }
    void setSearchText(const QString &text);

    /// Null when there is no such row.
    [[nodiscard]] const InstalledApplication *application(const QModelIndex &index) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    /// The name, and the icon as a QImage, which is null until there is one.
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

private:
    [[nodiscard]] std::optional<std::size_t> placeInList(const QModelIndex &index) const;

    std::shared_ptr<const AppPickerList> list_ = std::make_shared<AppPickerList>();
    /// In the order of the list, as far as they have come.
    std::vector<QImage> icons_;
    QString searchText_;
    std::vector<int> filtered_;
};

}  // namespace kestrelbay
