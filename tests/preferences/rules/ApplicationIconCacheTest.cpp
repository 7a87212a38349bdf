#include "preferences/rules/ApplicationIconCache.h"

#include <QImage>
#include <QPixmap>

#include <memory>

#include "preferences/rules/RowFixture.h"
#include "preferences/rules/RuleRowView.h"
#include "ui/widgets/SymbolView.h"
#include "ui/widgets/TextLabel.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

QIcon iconOf(const QColor &color) {
    QPixmap pixmap(64, 64);
    pixmap.fill(color);
    return pixmap;
}

class ApplicationIcons : public RowFixture {
protected:
    void SetUp() override {
        catalog_.add(u"/red"_s, u"Red"_s, iconOf(Qt::red));
        catalog_.add(u"/blue"_s, u"Blue"_s, iconOf(Qt::blue));
        QObject::connect(icons_.get(), &ApplicationIconCache::iconsArrived, icons_.get(),
                         [this] { ++arrivals_; });
    }

    void readIcons() {
        mainQueue_.runAll();
        backgroundQueue_.runAll();
        mainQueue_.runAll();
    }
    QColor middle(const QString &path) {
        const QImage image = icons_->icon(path);
        return image.isNull() ? QColor() : image.pixelColor(image.rect().center());
    }

    static ShortcutRule ruleOf(const QString &path) {
        return {.appName = u"Application"_s, .appPath = path};
    }
    RuleRowView *makeRow() {
        auto *row = new RuleRowView(services(), *icons_, *holders_, window_.get());
        row->setGeometry(0, 0, 600, RuleRowView::kHeight);
        window_->show();
        return row;
    }
    static SymbolView *iconView(const RuleRowView *row) { return row->findChild<SymbolView *>(); }
    /// In the middle of the row's icon.
    static QColor shown(const RuleRowView *row) {
        const QImage image = iconView(row)->grab().toImage();
        return image.pixelColor(image.rect().center());
    }

    int arrivals_ = 0;
};

TEST_F(ApplicationIcons, AreReadTogetherOffTheMainThread) {
    EXPECT_TRUE(icons_->icon(u"/red"_s).isNull());
    EXPECT_TRUE(icons_->icon(u"/blue"_s).isNull());
    EXPECT_TRUE(icons_->icon(u"/red"_s).isNull());
    mainQueue_.runAll();
    EXPECT_EQ(catalog_.listIconRequests(), QStringList());
    backgroundQueue_.runAll();
    EXPECT_EQ(catalog_.listIconRequests(), QStringList{u"/red /blue"_s});
    EXPECT_TRUE(icons_->icon(u"/red"_s).isNull());
    mainQueue_.runAll();
    EXPECT_EQ(arrivals_, 1);
    EXPECT_EQ(middle(u"/red"_s), QColor(Qt::red));
    EXPECT_EQ(middle(u"/blue"_s), QColor(Qt::blue));
    EXPECT_EQ(icons_->icon(u"/red"_s).size(), QSize(28, 28));
    readIcons();
    EXPECT_EQ(catalog_.listIconRequests().size(), 1);
}

TEST_F(ApplicationIcons, ThereIsNoneForNoPath) {
    EXPECT_TRUE(icons_->icon({}).isNull());
    EXPECT_EQ(mainQueue_.pendingCount(), 0U);
}

TEST_F(ApplicationIcons, WhatIsWantedMeanwhileIsReadNext) {
    EXPECT_TRUE(icons_->icon(u"/red"_s).isNull());
    mainQueue_.runAll();
    EXPECT_TRUE(icons_->icon(u"/blue"_s).isNull());
    EXPECT_EQ(backgroundQueue_.pendingCount(), 1U);
    readIcons();
    EXPECT_EQ(middle(u"/red"_s), QColor(Qt::red));
    EXPECT_TRUE(icons_->icon(u"/blue"_s).isNull());
    readIcons();
    EXPECT_EQ(middle(u"/blue"_s), QColor(Qt::blue));
    EXPECT_EQ(catalog_.listIconRequests(), (QStringList{u"/red"_s, u"/blue"_s}));
}

TEST_F(ApplicationIcons, AfterARefreshTheOldOneIsShownUntilTheNewOneIsThere) {
    EXPECT_TRUE(icons_->icon(u"/red"_s).isNull());
    readIcons();
    catalog_.add(u"/red"_s, u"Red"_s, iconOf(Qt::green));
    readIcons();
    EXPECT_EQ(middle(u"/red"_s), QColor(Qt::red));
    icons_->refresh();
    EXPECT_EQ(middle(u"/red"_s), QColor(Qt::red));
    readIcons();
    EXPECT_EQ(middle(u"/red"_s), QColor(Qt::green));
}

TEST_F(ApplicationIcons, ARefreshThatFindsNothingNewTellsNothing) {
    EXPECT_TRUE(icons_->icon(u"/red"_s).isNull());
    icons_->refresh();
    EXPECT_EQ(arrivals_, 0);
    readIcons();
    EXPECT_EQ(catalog_.listIconRequests().size(), 1);
    icons_->refresh();
    EXPECT_EQ(middle(u"/red"_s), QColor(Qt::red));
    arrivals_ = 0;
    readIcons();
    EXPECT_EQ(catalog_.listIconRequests().size(), 2);
    EXPECT_EQ(arrivals_, 0);
}

TEST_F(ApplicationIcons, MayGoWhileTheirIconsAreOnTheWay) {
    for (int steps = 0; steps < 3; ++steps) {
        icons_ = std::make_unique<ApplicationIconCache>(services());
        EXPECT_TRUE(icons_->icon(u"/red"_s).isNull());
        if (steps > 0)
            mainQueue_.runAll();
        if (steps > 1)
            backgroundQueue_.runAll();
        icons_.reset();
        readIcons();
        EXPECT_EQ(mainQueue_.pendingCount() + backgroundQueue_.pendingCount(), 0U);
    }
}

TEST_F(ApplicationIcons, ARowShowsASymbolUntilItsIconIsThere) {
    RuleRowView *const row = makeRow();
    row->configure(ruleOf(u"/red"_s), nullptr);
    const QRect place = iconView(row)->geometry();
    const QRect name = row->findChild<ElidedLabel *>()->geometry();
    EXPECT_EQ(place.size(), QSize(28, 28));
    EXPECT_NE(shown(row), QColor(Qt::red));
    readIcons();
    EXPECT_EQ(shown(row), QColor(Qt::red));
    EXPECT_EQ(iconView(row)->geometry(), place);
    EXPECT_EQ(row->findChild<ElidedLabel *>()->geometry(), name);
}

TEST_F(ApplicationIcons, ARowThatHasAnotherRuleMeanwhileShowsThatOnesIcon) {
    RuleRowView *const row = makeRow();
    row->configure(ruleOf(u"/red"_s), nullptr);
    mainQueue_.runAll();
    row->configure(ruleOf(u"/blue"_s), nullptr);
    readIcons();
    EXPECT_NE(shown(row), QColor(Qt::red));
    readIcons();
    EXPECT_EQ(shown(row), QColor(Qt::blue));
    row->configure(ruleOf(u"/red"_s), nullptr);
    EXPECT_EQ(shown(row), QColor(Qt::red));
    row->configure(ruleOf({}), nullptr);
    EXPECT_NE(shown(row), QColor(Qt::red));
}

TEST_F(ApplicationIcons, ARowMadeLaterHasItsIconAtOnce) {
    EXPECT_TRUE(icons_->icon(u"/red"_s).isNull());
    readIcons();
    RuleRowView *const row = makeRow();
    row->configure(ruleOf(u"/red"_s), nullptr);
    EXPECT_EQ(shown(row), QColor(Qt::red));
}

TEST_F(ApplicationIcons, ARowMayGoWhileItsIconIsOnTheWay) {
    RuleRowView *const row = makeRow();
    row->configure(ruleOf(u"/red"_s), nullptr);
    delete row;
    readIcons();
    EXPECT_EQ(arrivals_, 1);
}

}  // namespace

}  // namespace kestrelbay
