#include "preferences/rules/RulesModel.h"

#include <iterator>

#include <QMimeData>

#include "preferences/RuleRowTexts.h"
#include "settings/L.h"
#include "ui/list/RowDrop.h"

namespace kestrelbay {

RulesModel::RulesModel(ShortcutManager &manager, const KeyboardLayout &layout, QObject *parent)
    : QAbstractListModel(parent), manager_(manager), layout_(layout) {}

void RulesModel::reload() {
    const int count = static_cast<int>(manager_.rules().size());
    ids_.clear();
    for (const ShortcutRule &rule : manager_.rules())
        ids_.push_back(rule.id);
    if (count < rowCount_) {
        beginRemoveRows({}, count, rowCount_ - 1);
        rowCount_ = count;
        endRemoveRows();
    } else if (count > rowCount_) {
        beginInsertRows({}, rowCount_, count - 1);
        rowCount_ = count;
        endInsertRows();
    }
    if (count > 0)
        Q_EMIT dataChanged(index(0), index(count - 1));
}

std::optional<QUuid> RulesModel::idAt(int row) const {
    const bool isRow = row >= 0 && row < std::ssize(ids_);
    return isRow ? std::optional(ids_[static_cast<std::size_t>(row)]) : std::nullopt;
}

int RulesModel::rowCount(const QModelIndex &parent) const {
    return parent.isValid() ? 0 : rowCount_;
}

QVariant RulesModel::data(const QModelIndex &index, int role) const {
    const auto row = static_cast<std::size_t>(index.row());
    if (!index.isValid() || row >= manager_.rules().size() || role != Qt::AccessibleTextRole)
        return {};
    const ShortcutRule &rule = manager_.rules()[row];
    return QString(shownAppName(rule) + L::keySeparator() +
                   hotkeyInWords(rule.keyCode, rule.modifierFlags, layout_));
}

bool RulesModel::moveRows(const QModelIndex &, int source, int count, const QModelIndex &,
                          int gap) {
    if (count != 1)
        return false;
    moveRule(source, dropDestination(source, gap));
    return true;
}

QStringList RulesModel::mimeTypes() const {
    return {QStringLiteral("text/plain")};
}

QMimeData *RulesModel::mimeData(const QModelIndexList &indexes) const {
    auto *const data = new QMimeData;
    data->setText(textOfDraggedRow(indexes.value(0).row()));
    return data;
}

Qt::DropActions RulesModel::supportedDropActions() const {
    return Qt::MoveAction | Qt::CopyAction;
}

bool RulesModel::dropMimeData(const QMimeData *data, Qt::DropAction, int gap, int,
                              const QModelIndex &) {
    const auto source = draggedRow(data->text());
    if (source)
        moveRule(*source, dropDestination(*source, gap));
    return source.has_value();
}

void RulesModel::moveRule(std::ptrdiff_t source, std::ptrdiff_t destination) {
    manager_.moveRule(source, destination);
    reload();
    if (source >= 0 && source < rowCount_)
        Q_EMIT ruleMoved(static_cast<int>(destination));
}

}  // namespace kestrelbay
