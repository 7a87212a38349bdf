#pragma once

#include <memory>

#include <QTest>

#include "fixtures/ServicesFixture.h"
#include "preferences/advanced/AdvancedSettingsViewController.h"
#include "preferences/rules/RulesViewController.h"
#include "preferences/window/PreferencesWindowController.h"
#include "preferences/window/TabBarView.h"

namespace kestrelbay {

/// The preferences in their window, made when it is first asked for.
class PreferencesWindowFixture : public ServicesFixture {
protected:
    PreferencesWindowController &controller() {
        if (!controller_)
            controller_ = std::make_unique<PreferencesWindowController>(services());
        return *controller_;
    }
    QWidget &window() { return *controller().window(); }
    /// The only one that is not about to go.
    template <typename View>
    View *view() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const QList<View *> views = window().findChildren<View *>();
        EXPECT_LE(views.size(), 1);
        return views.isEmpty() ? nullptr : views.first();
    }
    void clickTab(int index) {
        QTest::mouseClick(view<TabBarView>(), Qt::LeftButton, {}, {index == 0 ? 80 : 240, 16});
    }
    void expectTab(int index) {
        EXPECT_EQ(view<TabBarView>()->selectedIndex(), index);
        EXPECT_EQ(view<RulesViewController>() != nullptr, index == 0);
        EXPECT_EQ(view<AdvancedSettingsViewController>() != nullptr, index == 1);
    }
    QString secondTitle() { return view<TabBarView>()->itemViews().at(1)->title(); }

private:
    std::unique_ptr<PreferencesWindowController> controller_;
};

}  // namespace kestrelbay
