#include <QApplication>
#include <QDrag>
#include <QImage>
#include <QPixmap>
#include <QPointer>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "preferences/rules/RulesListFixture.h"
#include "preferences/rules/RulesModel.h"
#include "preferences/rules/RulesViewController.h"
#include "preferences/rules/display/Mouse.h"
#include "support/KeyPresser.h"
#include "support/Poll.h"
#include "tasks/DispatchQueue.h"
#include "tasks/Timers.h"
#include "ui/list/RowDrop.h"

#include "ui/list/RowListView.h"
#include "ui/look/SystemColors.h"

namespace kestrelbay {
namespace {

using namespace Qt::StringLiterals;
using testing::KeyPresser;
using testing::Mouse;
using testing::waitUntil;

constexpr int kPitch = 56;

/// What the user does next, once the condition holds. Runs off a timer, since a drag
/// keeps the test in a loop of its own.
class Script {
public:
    using Condition = std::function<bool()>;

    void when(Condition condition, std::function<void()> action) {
        steps_.emplace_back(std::move(condition), std::move(action));
    }
    /// False when a condition never held.
    [[nodiscard]] bool run() {
        std::size_t next = 0;
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
            if (next == steps_.size() || !steps_[next].first())
                return;
            const std::function<void()> action = steps_[next++].second;
            action();
        });
        timer.start(5);
        return waitUntil([&] { return next == steps_.size(); });
    }

private:
    std::vector<std::pair<Condition, std::function<void()>>> steps_;
};

class RulesDragTest : public RulesListFixture {
protected:
    void show(int rules) {
        addRules(rules);
        list_ = std::make_unique<RulesViewController>(services(timers_, mainQueue_), icons_,
                                                      deletion_, sheets());
        list_->move(0, 0);
        list_->show();
        list_->activateWindow();
        ASSERT_TRUE(waitUntil([this] { return list_->windowHandle()->isExposed(); }));
        mouse_.moveTo({1200, 780});
    }
    [[nodiscard]] RowListView &view() const { return *list_->listView(); }
    [[nodiscard]] DropLine *line() const { return view().viewport()->findChild<DropLine *>(); }
    [[nodiscard]] bool isLineShown() const { return line()->isVisible(); }

    /// A place in the list on the screen; y counts from its upper edge.
    [[nodiscard]] QPoint place(int y) const {
        return view().viewport()->mapToGlobal(QPoint(80, y));
    }
    /// Presses in the middle of a row and goes on until the drag is under way.
    void takeUp(int row) {
        script_.when([] { return true; },
                     [this, row] {
                         mouse_.moveTo(place(row * kPitch + 28));
                         mouse_.press();
                     });
        script_.when([this, row] { return view().selectedRow() == row; },
                     [this, row] { mouse_.moveTo(place(row * kPitch + 48)); });
    }
    /// Goes there step by step, as drags are told of moves only.
    void dragTo(int y, const Script::Condition &condition) {
        script_.when(
            [this, y, condition, jitter = 0]() mutable {
                jitter = 1 - jitter;
                mouse_.moveTo(place(y) + QPoint(jitter, 0));
                return condition();
            },
            [] {});
    }

    QtTimers timers_;
    MainQueue mainQueue_;
    QString display_ = qEnvironmentVariable("DISPLAY");
    Mouse mouse_{display_};
    KeyPresser keys_{display_};
    Script script_;
    std::unique_ptr<RulesViewController> list_;
};

TEST_F(RulesDragTest, movesARowToTheGapWhereItIsDropped) {
    show(6);
    takeUp(1);
    dragTo(4 * kPitch,
           [this] { return isLineShown() && line()->geometry().center().y() + 1 == 4 * kPitch; });
    script_.when([] { return true; }, [this] { mouse_.release(); });
    script_.when([this] { return order() == u"023145"_s; }, [] {});
    ASSERT_TRUE(script_.run()) << order().toStdString();
    EXPECT_EQ(view().selectedRow(), 3);
    EXPECT_FALSE(isLineShown());
}

/// Of the line on the screen, the part in its colour.
double inkedPart(const DropLine &line) {
    const QRect place(line.mapToGlobal(QPoint(0, 0)), line.size());
    const QImage picture = QGuiApplication::primaryScreen()
                               ->grabWindow(0, place.x(), place.center().y(), place.width(), 1)
                               .toImage();
    int inked = 0;
    for (int x = 0; x < picture.width(); ++x)
        inked += picture.pixelColor(x, 0) == colors::controlAccent() ? 1 : 0;
    return double(inked) / picture.width();
}

TEST_F(RulesDragTest, showsTheLineBesideThePictureWhereNothingIsSeenThrough) {
    nativeWindow_.setTranslucencyShown(false);
    show(6);
    takeUp(1);
    // From either side of the gap.
    for (const int aside : {-8, 8})
        dragTo(4 * kPitch + aside, [this] { return isLineShown() && inkedPart(*line()) > 0.95; });
    script_.when([] { return true; }, [this] { mouse_.release(); });
    EXPECT_TRUE(script_.run());
}

TEST_F(RulesDragTest, leavesTheOrderWhenDroppedOnARow) {
    show(6);
    takeUp(1);
    dragTo(4 * kPitch, [this] { return isLineShown(); });
    dragTo(4 * kPitch + 28, [this] { return !isLineShown(); });
    script_.when([] { return true; }, [this] { mouse_.release(); });
    ASSERT_TRUE(script_.run());
    EXPECT_TRUE(waitUntil([this] { return !view().drag(); }));
    EXPECT_EQ(order(), u"012345"_s);
}

TEST_F(RulesDragTest, leavesTheOrderWhenEscapeIsPressed) {
    show(6);
    takeUp(1);
    dragTo(4 * kPitch, [this] { return isLineShown(); });
    script_.when([] { return true; }, [this] { keys_.chord({testing::xkey::kEscape}); });
    script_.when([this] { return !view().drag(); }, [this] { mouse_.release(); });
    ASSERT_TRUE(script_.run());
    EXPECT_FALSE(isLineShown());
    EXPECT_EQ(order(), u"012345"_s);
}

TEST_F(RulesDragTest, scrollsToTheEndOfALongList) {
    show(50);
    const QStringList before = names();
    takeUp(1);
    const int bottom = view().viewport()->height() - 3;
    dragTo(bottom, [this] { return view().offset() + view().viewport()->height() == 50 * kPitch; });
    dragTo(bottom, [this] { return isLineShown(); });
    script_.when([] { return true; }, [this] { mouse_.release(); });
    script_.when([this] { return names().last() == u"1"_s; }, [] {});
    ASSERT_TRUE(script_.run());
    EXPECT_EQ(names().first(), before.first());
    EXPECT_EQ(view().selectedRow(), 49);
}

TEST_F(RulesDragTest, givesADragUpWhenTheListIsReloaded) {
    show(6);
    takeUp(1);
    dragTo(4 * kPitch, [this] { return isLineShown(); });
    script_.when([] { return true; }, [this] { list_->model()->reload(); });
    script_.when([this] { return !view().drag(); }, [this] { mouse_.release(); });
    ASSERT_TRUE(script_.run());
    EXPECT_EQ(order(), u"012345"_s);
}

TEST_F(RulesDragTest, bearsTheEndOfTheListDuringADrag) {
    show(6);
    QPointer<QDrag> drag;
    takeUp(1);
    dragTo(4 * kPitch, [this] { return isLineShown(); });
    script_.when([] { return true; },
                 [this, &drag] {
                     drag = view().drag();
                     list_.reset();
                 });
    script_.when([&drag] { return drag.isNull(); }, [this] { mouse_.release(); });
    ASSERT_TRUE(script_.run());
    EXPECT_EQ(order(), u"012345"_s);
}

}  // namespace
}  // namespace kestrelbay
