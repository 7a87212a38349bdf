#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include <QObject>
#include <QUuid>

#include "model/ShortcutRule.h"
#include "preferences/PreferencesServices.h"

namespace kestrelbay {

/// Deletes rules and gives them back, the last one first. Main thread.
class RuleDeletion final : public QObject {
    Q_OBJECT

public:
    /// The services have to outlive it.
    explicit RuleDeletion(PreferencesServices services) : services_(std::move(services)) {}

    /// A toast tells of it and offers to undo it.
    void remove(QUuid id);

    [[nodiscard]] bool canUndo() const { return !deleted_.empty(); }
    /// The rule that was deleted last comes back to its place, without its hotkey if another rule
    /// has that by now.
    void undo();
    /// Nothing can be undone any more.
    void forget() { deleted_.clear(); }

Q_SIGNALS:
    /// The rule is in the list again.
    void restored(const QUuid &id);

private:
    // Ids go by value, as where they come from may go meanwhile: a rule, or a toast.

    struct Deleted {
        ShortcutRule rule;
        std::size_t place;
    };

    void restore(QUuid id);

    PreferencesServices services_;
    std::vector<Deleted> deleted_;
};

}  // namespace kestrelbay
