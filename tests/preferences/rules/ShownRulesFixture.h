#pragma once

#include <memory>

#include <gtest/gtest.h>

#include "fixtures/ActiveWindow.h"
#include "preferences/rules/RuleRowView.h"
#include "preferences/rules/RulesListFixture.h"
#include "ui/list/RowListView.h"

namespace kestrelbay {

/// A rules list in view.
class ShownRulesFixture : public RulesListFixture {
protected:
    RulesViewController &list() {
        if (!list_) {
            list_ = std::make_unique<RulesViewController>(services(), icons_, deletion_, sheets());
            list_->show();
            EXPECT_TRUE(activate(*list_));
        }
        return *list_;
    }
    RowListView &view() { return *list().listView(); }
    [[nodiscard]] RuleRowView *row(int index) {
        return qobject_cast<RuleRowView *>(view().rowWidget(index));
    }

    std::unique_ptr<RulesViewController> list_;
};

}  // namespace kestrelbay
