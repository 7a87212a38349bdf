#pragma once

#include <memory>

namespace kestrelbay {

class RuleRowView;
struct ShortcutRule;

/// Whoever shows rule rows. Rows hold it weakly: once it is destroyed, nothing is
/// asked of it any more. Both may reconfigure or destroy the row.
class RuleRowViewDelegate {
public:
    RuleRowViewDelegate() = default;
    virtual ~RuleRowViewDelegate() = default;
    RuleRowViewDelegate(const RuleRowViewDelegate &) = delete;
    RuleRowViewDelegate &operator=(const RuleRowViewDelegate &) = delete;

    /// The user has confirmed that the rule shall go.
    virtual void ruleRowViewDidDelete(RuleRowView *row, const ShortcutRule &rule) = 0;
    /// The user wants the advanced options of a rule that is in the list.
    virtual void ruleRowViewDidOpenAdvanced(RuleRowView *row, const ShortcutRule &rule) = 0;

    [[nodiscard]] std::weak_ptr<RuleRowViewDelegate> weakly() const { return self_; }

private:
    // Owns nothing; it only ends with the object.
    std::shared_ptr<RuleRowViewDelegate> self_{this, [](RuleRowViewDelegate *) {}};
};

}  // namespace kestrelbay
