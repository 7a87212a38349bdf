#include "settings/NotificationCenter.h"

#include <array>
#include <memory>
#include <utility>

#include <gtest/gtest.h>

#include <QObject>
#include <QStringList>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr QLatin1StringView kNews{"news"};
constexpr QLatin1StringView kOther{"other"};

class NotificationCenterTest : public ::testing::Test {
protected:
    void observe(QObject *context, const QString &line) {
        center_->observe(kNews, context, [this, line] { heard_.append(line); });
    }

    std::unique_ptr<NotificationCenter> center_ = std::make_unique<NotificationCenter>();
    QObject context_;
    QStringList heard_;
};

TEST(NotificationNames, AreTheGivenTexts) {
    EXPECT_EQ(notifications::kAccessibilityGranted, "accessibilityGranted"_L1);
    EXPECT_EQ(notifications::kOpenPreferencesToAccessibility, "openPreferencesToAccessibility"_L1);
    EXPECT_EQ(notifications::kLanguageDidChange, "languageDidChange"_L1);
}

TEST_F(NotificationCenterTest, TheNamesOfTheProgramAreToldApart) {
    const std::array names{
        notifications::kAccessibilityGranted, notifications::kOpenPreferencesToAccessibility,
        notifications::kLanguageDidChange, notifications::kRefusedHotkeysDidChange};
    for (const QLatin1StringView name : names)
        center_->observe(name, &context_, [this, name] { heard_.append(name); });
    for (const QLatin1StringView name : names) {
        center_->post(name);
        EXPECT_EQ(std::exchange(heard_, {}), QStringList{name});
    }
}

TEST_F(NotificationCenterTest, WhatNobodyHeardIsNotToldLater) {
    center_->post(kNews);
    observe(&context_, u"heard"_s);
    EXPECT_EQ(heard_, QStringList());
    center_->post(kNews);
    EXPECT_EQ(heard_, QStringList{u"heard"_s});
}

TEST_F(NotificationCenterTest, EveryPostIsHeardInTheOrderOfObservers) {
    observe(&context_, u"first"_s);
    observe(&context_, u"second"_s);
    center_->post(kNews);
    center_->post(kNews);
    EXPECT_EQ(heard_, (QStringList{u"first"_s, u"second"_s, u"first"_s, u"second"_s}));
}

TEST_F(NotificationCenterTest, OtherNamesAreNotHeard) {
    observe(&context_, u"heard"_s);
    center_->post(kOther);
    EXPECT_EQ(heard_, QStringList());
}

TEST_F(NotificationCenterTest, CentersDoNotHearEachOther) {
    observe(&context_, u"heard"_s);
    NotificationCenter another;
    another.post(kNews);
    EXPECT_EQ(heard_, QStringList());
}

TEST_F(NotificationCenterTest, TheDefaultCenterBringsTogetherWhoeverAsksForIt) {
    NotificationCenter::defaultCenter().observe(kNews, &context_,
                                                [this] { heard_.append(u"heard"_s); });
    NotificationCenter::defaultCenter().post(kNews);
    EXPECT_EQ(heard_, QStringList{u"heard"_s});
}

TEST_F(NotificationCenterTest, ADestroyedContextHearsNothing) {
    auto context = std::make_unique<QObject>();
    observe(context.get(), u"gone"_s);
    observe(&context_, u"here"_s);
    context.reset();
    center_->post(kNews);
    EXPECT_EQ(heard_, QStringList{u"here"_s});
}

TEST_F(NotificationCenterTest, WhatAFunctionHoldsGoesWithItsContext) {
    auto context = std::make_unique<QObject>();
    auto held = std::make_shared<int>();
    const std::weak_ptr<int> watched = held;
    center_->observe(kNews, context.get(), [held = std::move(held)] {});
    EXPECT_FALSE(watched.expired());
    context.reset();
    EXPECT_TRUE(watched.expired());
}

TEST_F(NotificationCenterTest, StoppingEndsThatNameOfThatContextOnly) {
    QObject another;
    observe(&context_, u"mine"_s);
    observe(&context_, u"mine again"_s);
    observe(&another, u"another's"_s);
    center_->observe(kOther, &context_, [this] { heard_.append(u"other"_s); });
    center_->stopObserving(kNews, &context_);
    center_->post(kNews);
    center_->post(kOther);
    EXPECT_EQ(heard_, (QStringList{u"another's"_s, u"other"_s}));
}

TEST_F(NotificationCenterTest, ObservingIsPossibleAgainAfterStopping) {
    observe(&context_, u"once"_s);
    center_->stopObserving(kNews, &context_);
    observe(&context_, u"again"_s);
    center_->post(kNews);
    EXPECT_EQ(heard_, QStringList{u"again"_s});
}

TEST_F(NotificationCenterTest, AnObserverAddedByAPostHearsTheNextOne) {
    center_->observe(kNews, &context_, [this] {
        heard_.append(u"old"_s);
        if (heard_.size() == 1)
            observe(&context_, u"new"_s);
    });
    center_->post(kNews);
    EXPECT_EQ(heard_, QStringList{u"old"_s});
    center_->post(kNews);
    EXPECT_EQ(heard_, (QStringList{u"old"_s, u"old"_s, u"new"_s}));
}

TEST_F(NotificationCenterTest, AnObserverStoppedByThePostIsNotCalled) {
    QObject another;
    center_->observe(kNews, &context_, [&] { center_->stopObserving(kNews, &another); });
    observe(&another, u"stopped"_s);
    center_->post(kNews);
    EXPECT_EQ(heard_, QStringList());
}

TEST_F(NotificationCenterTest, AnObserverDestroyedByThePostIsNotCalled) {
    auto another = std::make_unique<QObject>();
    center_->observe(kNews, &context_, [&another] { another.reset(); });
    observe(another.get(), u"destroyed"_s);
    observe(&context_, u"last"_s);
    center_->post(kNews);
    EXPECT_EQ(heard_, QStringList{u"last"_s});
}

TEST_F(NotificationCenterTest, AnObserverMayDestroyItself) {
    auto context = std::make_unique<QObject>();
    const auto held = std::make_shared<QString>(u"still here"_s);
    center_->observe(kNews, context.get(), [this, &context, text = held] {
        context.reset();
        heard_.append(*text);
    });
    center_->post(kNews);
    center_->post(kNews);
    EXPECT_EQ(heard_, QStringList{u"still here"_s});
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(NotificationCenterTest, AnObserverMayPost) {
    center_->observe(kNews, &context_, [this] {
        heard_.append(u"outer"_s);
        if (heard_.size() < 3)
            center_->post(kNews);
    });
    observe(&context_, u"inner"_s);
    center_->post(kNews);
    EXPECT_EQ(heard_, (QStringList{u"outer"_s, u"outer"_s, u"outer"_s, u"inner"_s, u"inner"_s,
                                   u"inner"_s}));
}

TEST_F(NotificationCenterTest, APostInWhichTheCenterGoesEndsThere) {
    center_->observe(kNews, &context_, [this] {
        heard_.append(u"first"_s);
        center_.reset();
    });
    observe(&context_, u"second"_s);
    center_->post(kNews);
    EXPECT_EQ(heard_, QStringList{u"first"_s});
}

TEST_F(NotificationCenterTest, AContextMayOutliveTheCenter) {
    auto context = std::make_unique<QObject>();
    observe(context.get(), u"heard"_s);
    center_.reset();
    context.reset();
    EXPECT_EQ(heard_, QStringList());
}

TEST_F(NotificationCenterTest, WhatAFunctionHoldsMayStopOthersWhenItGoes) {
    struct StopsWhenGone {
        StopsWhenGone(NotificationCenter &center, const QObject *context)
            : center_(center), context_(context) {}
        ~StopsWhenGone() { center_.stopObserving(kNews, context_); }
        StopsWhenGone(const StopsWhenGone &) = delete;
        StopsWhenGone &operator=(const StopsWhenGone &) = delete;

    private:
        NotificationCenter &center_;
        const QObject *context_;
    };
    QObject another;
    observe(&another, u"stopped"_s);
    center_->observe(kOther, &context_,
                     [held = std::make_shared<StopsWhenGone>(*center_, &another)] {});
    center_->stopObserving(kOther, &context_);
    center_->post(kNews);
    EXPECT_EQ(heard_, QStringList());
}

}  // namespace

}  // namespace kestrelbay
