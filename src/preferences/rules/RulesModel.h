#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <QAbstractListModel>
#include <QUuid>

#include "hotkeys/ShortcutManager.h"

namespace kestrelbay {

class KeyboardLayout;

/// The rules as the rows of a list, by their place in it. Qt::AccessibleTextRole is what
/// a screen reader says of one; all else is in the store. A dragged row carries its index.
class RulesModel final : public QAbstractListModel {
    Q_OBJECT

public:
    /// The manager and the layout have to outlive the model. There are no rows before the first
    /// reload().
    RulesModel(ShortcutManager &manager, const KeyboardLayout &layout, QObject *parent);

    /// Takes over the rules as they are in the store now: any row may show another one.
    void reload();

    /// Of the rule that the row has shown since the last reload(); none for no row.
    [[nodiscard]] std::optional<QUuid> idAt(int row) const;

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    bool moveRows(const QModelIndex &sourceParent, int source, int count,
                  const QModelIndex &destinationParent, int gap) override;

    [[nodiscard]] QStringList mimeTypes() const override;
    [[nodiscard]] QMimeData *mimeData(const QModelIndexList &indexes) const override;
    [[nodiscard]] Qt::DropActions supportedDropActions() const override;
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int gap, int column,
                      const QModelIndex &parent) override;

Q_SIGNALS:
    /// A rule has been put there, by a drag or by a key.
    void ruleMoved(int row);

private:
    void moveRule(std::ptrdiff_t source, std::ptrdiff_t destination);

    ShortcutManager &manager_;
    const KeyboardLayout &layout_;
    std::vector<QUuid> ids_;
    int rowCount_ = 0;
};

}  // namespace kestrelbay
