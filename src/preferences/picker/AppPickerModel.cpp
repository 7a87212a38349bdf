#include "preferences/picker/AppPickerModel.h"

#include <utility>

namespace kestrelbay {

void AppPickerModel::setList(std::shared_ptr<const AppPickerList> list) {
    beginResetModel();
    list_ = std::move(list);
    filtered_ = list_->matching(searchText_);
    endResetModel();
}

void AppPickerModel::setSearchText(const QString &text) {
    searchText_ = text;
    std::vector<int> filtered = list_->matching(text);
    // A selection does not survive a reset, and need not go for a space.
    if (filtered == filtered_)
        return;
    beginResetModel();
    filtered_ = std::move(filtered);
    endResetModel();
}

const InstalledApplication *AppPickerModel::application(const QModelIndex &index) const {
    if (!index.isValid() || index.row() >= rowCount())
        return nullptr;
    const int at = filtered_[static_cast<std::size_t>(index.row())];
    return &list_->applications()[static_cast<std::size_t>(at)];
}

int AppPickerModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(filtered_.size());
}

QVariant AppPickerModel::data(const QModelIndex &index, int role) const {
    const InstalledApplication *shown = application(index);
    if (shown && role == Qt::DisplayRole)
        return shown->name;
    if (shown && role == Qt::DecorationRole)
        return shown->icon;
    return {};
}

}  // namespace kestrelbay
