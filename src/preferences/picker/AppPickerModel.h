#pragma once

#include <memory>
#include <vector>

#include <QAbstractListModel>

#include "preferences/picker/AppPickerList.h"

namespace kestrelbay {

/// The rows of the app picker: those of the list that match the search.
class AppPickerModel final : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    void setList(std::shared_ptr<const AppPickerList> list);
    void setSearchText(const QString &text);

    /// Null when there is no such row.
    [[nodiscard]] const InstalledApplication *application(const QModelIndex &index) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    /// The name, and the icon as a QImage.
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

private:
    std::shared_ptr<const AppPickerList> list_ = std::make_shared<AppPickerList>();
    QString searchText_;
    std::vector<int> filtered_;
};

}  // namespace kestrelbay
