#pragma once

#include <functional>
#include <vector>

#include <QObject>
#include <QUuid>

class QMenu;
class QPoint;

namespace kestrelbay {

class RowListView;
class RulesModel;

/// The menu of the rules list, and the keys of its entries. Main thread.
class RulesMenu final : public QObject {
    Q_OBJECT

public:
    /// What the entries do. The first are for one rule, which is in the list.
    struct Commands {
        std::function<void(const QUuid &)> record;
        std::function<void(const QUuid &)> useEitherSide;
        /// Is that what the rule needs?
        std::function<bool(const QUuid &)> needsSides;
        std::function<void(const QUuid &)> showOptions;
        std::function<void(const QUuid &)> showInFolder;
        std::function<void(const QUuid &)> duplicate;
        std::function<void(const QUuid &)> remove;
        std::function<void()> undoDeletion;
        std::function<bool()> canUndoDeletion;
        std::function<void()> importRules;
        std::function<void()> exportRules;
    };

    /// Belongs to the list. The model has to outlive it.
    RulesMenu(RowListView &list, const RulesModel &model, Commands commands);

private:
    struct Entry;

    [[nodiscard]] std::vector<Entry> ruleEntries() const;
    /// For the rule of this row, or without one for the list alone.
    void open(const QPoint &place, int row);
    void addShortcuts();

    RowListView &list_;
    const RulesModel &model_;
    const Commands commands_;
};

}  // namespace kestrelbay
