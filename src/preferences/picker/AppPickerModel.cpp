#include "preferences/picker/AppPickerModel.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include <QCollator>

#include "model/TrimmedText.h"

namespace kestrelbay {

namespace {

/// Upper case first: it writes out what lower case has several forms for, such as ß and
/// the two small sigmas.
QString folded(const QString &text, const QLocale &locale) {
    const QString composed = text.normalized(QString::NormalizationForm_C);
    return locale.toLower(locale.toUpper(composed)).normalized(QString::NormalizationForm_C);
}

QCollator collatorFor(const QLocale &locale) {
    // "C" compares code points, which is no order for people.
    QCollator collator(locale.language() == QLocale::C ? QLocale(QLocale::English) : locale);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    return collator;
}

}  // namespace

AppPickerList::AppPickerList(std::vector<InstalledApplication> applications, const QLocale &locale)
    : locale_(locale) {
    const QCollator collator = collatorFor(locale);
    std::vector<QCollatorSortKey> keys;
    keys.reserve(applications.size());
    for (const InstalledApplication &application : applications)
        keys.push_back(collator.sortKey(application.name));
    std::vector<std::size_t> order(applications.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t one, std::size_t other) { return keys[one] < keys[other]; });

    applications_.reserve(order.size());
    folded_.reserve(order.size());
    for (const std::size_t at : order) {
        const InstalledApplication &application =
            applications_.emplace_back(std::move(applications[at]));
        folded_.push_back({.name = folded(application.name, locale_),
                           .fileName = folded(application.fileName, locale_)});
    }
}

std::vector<int> AppPickerList::matching(const QString &searchText) const {
    const QString wanted = folded(trimmedHorizontalSpace(searchText), locale_);
    std::vector<int> result;
    for (std::size_t i = 0; i < folded_.size(); ++i)
        if (folded_[i].name.contains(wanted) || folded_[i].fileName.contains(wanted))
            result.push_back(static_cast<int>(i));
    return result;
}

void AppPickerModel::setList(std::shared_ptr<const AppPickerList> list) {
    beginResetModel();
    list_ = std::move(list);
    icons_.clear();
    filtered_ = list_->matching(searchText_);
    endResetModel();
}

void AppPickerModel::addIcons(std::vector<QImage> icons) {
    std::ranges::move(icons, std::back_inserter(icons_));
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::DecorationRole});
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
    const std::optional<std::size_t> at = placeInList(index);
    return at ? &list_->applications()[*at] : nullptr;
}

std::optional<std::size_t> AppPickerModel::placeInList(const QModelIndex &index) const {
    if (!index.isValid() || index.row() >= rowCount())
        return std::nullopt;
    return static_cast<std::size_t>(filtered_[static_cast<std::size_t>(index.row())]);
}

int AppPickerModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : static_cast<int>(filtered_.size());
}

QVariant AppPickerModel::data(const QModelIndex &index, int role) const {
    const std::optional<std::size_t> at = placeInList(index);
    if (at && role == Qt::DisplayRole)
        return list_->applications()[*at].name;
    if (at && role == Qt::DecorationRole && *at < icons_.size())
        return icons_[*at];
    return {};
}

}  // namespace kestrelbay
