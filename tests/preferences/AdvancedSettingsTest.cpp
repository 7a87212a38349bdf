#include "preferences/AdvancedSettingsViewController.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <memory>

#include <QAccessible>
#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

#include "app/SystemColors.h"
#include "preferences/ActiveWindow.h"
#include "preferences/ServicesFixture.h"
#include "preferences/SettingRow.h"
#include "preferences/Switch.h"
#include "settings/L.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace kestrelbay {

namespace {

class AdvancedSettings : public ServicesFixture {
protected:
    AdvancedSettingsViewController &tab() {
        if (!tab_) {
            tab_ = std::make_unique<AdvancedSettingsViewController>(services());
            tab_->setRestart([this] { ++restarts_; });
        }
        return *tab_;
    }
    void show() {
        tab().show();
        ASSERT_TRUE(activate(tab()));
    }

    /// From top to bottom.
    QList<SettingRow *> rows() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QList<SettingRow *> all = tab().findChildren<SettingRow *>();
        std::ranges::sort(all, {}, &SettingRow::y);
        return all;
    }
    QStringList titles() {
        QStringList all;
        for (const SettingRow *row : rows())
            all.append(row->findChildren<QLabel *>().at(0)->text());
        return all;
    }
    static QString subtitle(const SettingRow *row) {
        return row->findChildren<QLabel *>().at(1)->text();
    }
    QPushButton *accessibilityButton() {
        return qobject_cast<QPushButton *>(tab().accessibilityRow()->control());
    }
    Switch *launchSwitch() { return tab().findChild<Switch *>(); }
    QDialog *restartSheet() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const QList<QDialog *> sheets = tab().findChildren<QDialog *>();
        EXPECT_LE(sheets.size(), 1);
        return sheets.isEmpty() ? nullptr : sheets.first();
    }
    static void comeBack() {
        Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationInactive);
        Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    }
    void press(const QString &title) {
        for (QPushButton *button : restartSheet()->findChildren<QPushButton *>()) {
            if (button->text() == title)
                return button->click();
        }
        FAIL() << "no button " << title.toStdString();
    }

    int restarts_ = 0;

private:
    std::unique_ptr<AdvancedSettingsViewController> tab_;
};

TEST_F(AdvancedSettings, RowsAreInOrderAndAccessComesLast) {
    EXPECT_EQ(tab().size(), QSize(640, 480));
    EXPECT_EQ(rows().size(), 5);
    EXPECT_EQ(tab().accessibilityRow(), nullptr);
    show();
    EXPECT_EQ(titles(), (QStringList{L::launchAtLogin(), L::language(), L::sound(),
                                     L::launchToast(), L::configFolder(), L::accessTitle()}));
}

TEST_F(AdvancedSettings, RowsFillTheColumn) {
    tap_.setPermission(false);
    show();
    QCoreApplication::processEvents();
    const QList<SettingRow *> all = rows();
    EXPECT_EQ(all.first()->geometry().topLeft(), QPoint(28, 24));
    for (qsizetype i = 0; i < all.size(); ++i) {
        EXPECT_EQ(all[i]->width(), 640 - 2 * 28);
        const QWidget *const control = all[i]->control();
        ASSERT_NE(control, nullptr);
        EXPECT_EQ(control->geometry().right(), all[i]->rect().right());
        if (i > 0) {
            EXPECT_EQ(all[i]->y(), all[i - 1]->geometry().bottom() + 1 + 20);
        }
        for (const QLabel *label : all[i]->findChildren<QLabel *>())
            EXPECT_LE(label->geometry().right() + 1 + 12, control->x());
    }
}

TEST_F(AdvancedSettings, TextsAreInTheLanguageInForce) {
    choose(Language::zh);
    show();
    EXPECT_EQ(titles(), (QStringList{u"登录时自动启动"_s, u"语言"_s, u"快捷键触发时播放声音"_s,
                                     u"启动图标弹窗"_s, u"配置文件位置"_s, L::accessTitle()}));
}

TEST_F(AdvancedSettings, EveryControlSaysWhatItIsFor) {
    tap_.setPermission(false);
    show();
    ASSERT_EQ(rows().size(), 6);
    for (const SettingRow *row : rows()) {
        const QAccessibleInterface *const told =
            QAccessible::queryAccessibleInterface(row->control());
        ASSERT_NE(told, nullptr);
        QLabel *const title = row->findChildren<QLabel *>().at(0);
        EXPECT_EQ(row->control()->accessibleName(), title->text());
        const auto labels = told->relations(QAccessible::Label);
        ASSERT_EQ(labels.size(), 1);
        EXPECT_EQ(labels.at(0).first, QAccessible::queryAccessibleInterface(title));
        EXPECT_EQ(told->text(QAccessible::Description), subtitle(row));
        EXPECT_TRUE(told->state().focusable);
    }
}

TEST_F(AdvancedSettings, TheSwitchShowsWhatTheSystemDoes) {
    defaults_.setBoolean(u"launchAtLogin"_s, false);
    loginItem_.setEnabledByOthers(true);
    EXPECT_TRUE(launchSwitch()->isChecked());
    EXPECT_EQ(defaults_.boolean(u"launchAtLogin"_s), true);
    EXPECT_TRUE(loginItem_.takeRequests().isEmpty());
}

TEST_F(AdvancedSettings, TheSwitchHasTheProgramLaunchedAtLogin) {
    launchSwitch()->click();
    EXPECT_TRUE(loginItem_.isEnabled());
    EXPECT_EQ(defaults_.boolean(u"launchAtLogin"_s), true);
    launchSwitch()->click();
    EXPECT_FALSE(loginItem_.isEnabled());
    EXPECT_EQ(defaults_.boolean(u"launchAtLogin"_s), false);
}

TEST_F(AdvancedSettings, ARefusalLeavesTheSwitchWhereTheUserPutIt) {
    loginItem_.setProblem(u"no"_s);
    launchSwitch()->click();
    EXPECT_EQ(launchAtLoginFailures_.size(), 1);
    EXPECT_TRUE(launchSwitch()->isChecked());
    EXPECT_EQ(defaults_.boolean(u"launchAtLogin"_s), true);
}

TEST_F(AdvancedSettings, TheConfigurationFolderIsShown) {
    show();
    SettingRow *const row = rows().at(4);
    EXPECT_EQ(subtitle(row), storageDirectory());
    qobject_cast<QPushButton *>(row->control())->click();
    EXPECT_EQ(workspace_.requests().lines(), QStringList{u"showFolder "_s + storageDirectory()});
}

TEST_F(AdvancedSettings, WithAccessThereIsNothingToPress) {
    show();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessGranted());
    EXPECT_EQ(tab().accessibilityRow()->control(), nullptr);
}

TEST_F(AdvancedSettings, WithoutAccessItSaysWhyAndHowToGetIt) {
    tap_.setPermission(false);
    show();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessMissing(TapProblem::NotPermitted));
    EXPECT_EQ(accessibilityButton()->text(), L::accessOpenSettings());
}

TEST_F(AdvancedSettings, AccessThatIsGrantedShowsAtOnce) {
    tap_.setPermission(false);
    show();
    tap_.setPermission(true);
    manager().reinstallEventTap();
    EXPECT_NE(accessibilityButton(), nullptr);
    center_.post(notifications::kAccessibilityGranted);
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessGranted());
    EXPECT_EQ(rows().size(), 6);
    EXPECT_EQ(rows().last(), tab().accessibilityRow());
}

TEST_F(AdvancedSettings, OutOfViewItHearsNothingButLooksAgainWhenItComesBack) {
    tap_.setPermission(false);
    show();
    tab().hide();
    const SettingRow *const before = tab().accessibilityRow();
    tap_.setPermission(true);
    manager().reinstallEventTap();
    center_.post(notifications::kAccessibilityGranted);
    EXPECT_EQ(tab().accessibilityRow(), before);
    show();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessGranted());
    EXPECT_EQ(rows().size(), 6);
}

TEST_F(AdvancedSettings, EveryVisitLeavesOneAccessRow) {
    for (int visit = 0; visit < 3; ++visit) {
        show();
        EXPECT_EQ(rows().size(), 6);
        tab().hide();
    }
}

TEST_F(AdvancedSettings, BackFromTheSettingsWithoutAccessARestartIsOffered) {
    tap_.setPermission(false);
    show();
    accessibilityButton()->click();
    EXPECT_EQ(systemSettings_.accessibilityPaneCalls(), 1);
    EXPECT_EQ(restartSheet(), nullptr);
    comeBack();
    ASSERT_NE(restartSheet(), nullptr);
    EXPECT_TRUE(restartSheet()->isModal());
    EXPECT_EQ(restartSheet()->windowTitle(), L::restartTitle());
    press(L::restartNow());
    EXPECT_EQ(restarts_, 1);
    EXPECT_EQ(restartSheet(), nullptr);
}

TEST_F(AdvancedSettings, LaterChangesNothing) {
    tap_.setPermission(false);
    show();
    accessibilityButton()->click();
    comeBack();
    press(L::restartLater());
    EXPECT_EQ(restarts_, 0);
    EXPECT_EQ(restartSheet(), nullptr);
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessMissing(TapProblem::NotPermitted));
    comeBack();
    EXPECT_EQ(restartSheet(), nullptr);
}

TEST_F(AdvancedSettings, EscapeIsLaterAndReturnIsNow) {
    tap_.setPermission(false);
    show();
    accessibilityButton()->click();
    comeBack();
    QTest::keyClick(restartSheet(), Qt::Key_Escape);
    EXPECT_EQ(restarts_, 0);
    accessibilityButton()->click();
    comeBack();
    QTest::keyClick(restartSheet(), Qt::Key_Return);
    EXPECT_EQ(restarts_, 1);
}

TEST_F(AdvancedSettings, TwoClicksOfferOneRestart) {
    tap_.setPermission(false);
    show();
    accessibilityButton()->click();
    accessibilityButton()->click();
    comeBack();
    EXPECT_NE(restartSheet(), nullptr);
    press(L::restartLater());
    comeBack();
    EXPECT_EQ(restartSheet(), nullptr);
}

TEST_F(AdvancedSettings, BackFromTheSettingsWithAccessTheTapIsMadeAnew) {
    tap_.setPermission(false);
    show();
    accessibilityButton()->click();
    tap_.setPermission(true);
    manager().reinstallEventTap();
    tap_.takeCalls();
    comeBack();
    EXPECT_EQ(tap_.takeCalls(), (QStringList{u"remove"_s, u"install"_s}));
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessGranted());
    EXPECT_EQ(restartSheet(), nullptr);
}

TEST_F(AdvancedSettings, ComingBackMeansNothingBeforeTheButtonIsPressed) {
    tap_.setPermission(false);
    show();
    comeBack();
    EXPECT_EQ(restartSheet(), nullptr);
}

TEST_F(AdvancedSettings, WithoutAPlaceForPermissionsItOnlyLooksAgain) {
    systemSettings_.setHasAccessibilityPane(false);
    tap_.setPermission(false);
    show();
    accessibilityButton()->click();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessMissing(TapProblem::NotPermitted));
    EXPECT_EQ(timers_.waitingCount(), 4U);
    comeBack();
    EXPECT_EQ(restartSheet(), nullptr);
    tap_.setPermission(true);
    accessibilityButton()->click();
    EXPECT_TRUE(manager().isAccessibilityGranted());
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessGranted());
}

TEST_F(AdvancedSettings, TheButtonKeepsTheFocusWhenTheRowIsMadeAnew) {
    tap_.setPermission(false);
    show();
    accessibilityButton()->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return accessibilityButton()->hasFocus(); }));
    tab().refreshAccessibilityRow();
    EXPECT_TRUE(accessibilityButton()->hasFocus());
}

TEST_F(AdvancedSettings, WithoutARowThereIsNothingToHighlight) {
    tab().highlightAccessibilityRow();
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(AdvancedSettings, TheRowFlashesTwice) {
    show();
    tab().highlightAccessibilityRow();
    const SettingRow *const row = tab().accessibilityRow();
    const auto reaches = [&](float alpha) {
        return QTest::qWaitFor(
            [&] { return std::abs(row->background().alphaF() - alpha) < 0.01F; });
    };
    const auto alpha = [&] { return row->background().alpha(); };
    EXPECT_EQ(alpha(), 0);
    timers_.advance(0ms);
    EXPECT_TRUE(reaches(0.28F));
    QColor orange = row->background();
    orange.setAlpha(255);
    EXPECT_EQ(orange.rgb(), colors::systemOrange().rgb());
    timers_.advance(249ms);
    EXPECT_TRUE(reaches(0.28F));
    timers_.advance(1ms);
    EXPECT_TRUE(reaches(0));
    timers_.advance(250ms);
    EXPECT_TRUE(reaches(0.28F));
    timers_.advance(350ms);
    EXPECT_TRUE(reaches(0));
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(AdvancedSettings, TheHighlightedRowIsScrolledIntoViewAndFocused) {
    tap_.setPermission(false);
    show();
    tab().resize(616, 150);
    QCoreApplication::processEvents();
    tab().highlightAccessibilityRow();
    const SettingRow *const row = tab().accessibilityRow();
    const QRect shown(row->mapTo(&tab(), QPoint()), row->size());
    EXPECT_TRUE(tab().rect().contains(shown));
    EXPECT_TRUE(accessibilityButton()->hasFocus());
}

TEST_F(AdvancedSettings, AnotherHighlightReplacesTheFirst) {
    show();
    tab().highlightAccessibilityRow();
    timers_.advance(300ms);
    tab().highlightAccessibilityRow();
    EXPECT_EQ(timers_.waitingCount(), 4U);
}

TEST_F(AdvancedSettings, AHighlightEndsWithItsRow) {
    show();
    tab().highlightAccessibilityRow();
    tab().refreshAccessibilityRow();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(timers_.waitingCount(), 0U);
    EXPECT_EQ(tab().accessibilityRow()->background().alpha(), 0);
}

TEST_F(AdvancedSettings, EveryTextIsSeenWhole) {
    const QString longPath = storageDirectory() + u'/' + QString(200, u'x');
    ShortcutManager elsewhere(longPath, tap_, log_, {});
    tap_.setPermission(false);
    tap_.setRefusal(TapProblem::WaylandSession);
    elsewhere.reinstallEventTap();
    for (const Language language : {Language::en, Language::zh}) {
        choose(language);
        AdvancedSettingsViewController view(servicesFor(elsewhere));
        view.resize(616, 431);
        view.show();
        QCoreApplication::processEvents();
        const QList<SettingRow *> all = view.findChildren<SettingRow *>();
        ASSERT_EQ(all.size(), 6);
        int wrapped = 0;
        for (const SettingRow *row : all) {
            const QLabel *const text = row->findChildren<QLabel *>().at(1);
            EXPECT_GE(text->height(), text->heightForWidth(text->width()))
                << text->text().toStdString();
            EXPECT_TRUE(row->rect().contains(text->geometry()));
            if (text->heightForWidth(text->width()) > text->sizeHint().height())
                ++wrapped;
        }
        EXPECT_GE(wrapped, 1);
        EXPECT_EQ(view.accessibilityRow()->findChildren<QLabel *>().at(1)->text(),
                  L::accessMissing(TapProblem::WaylandSession));
    }
}

TEST_F(AdvancedSettings, ALongPathIsBrokenIntoLines) {
    SettingRow row(u"Title"_s, u"/"_s + QString(400, u'x'), nullptr);
    row.resize(300, 100);
    EXPECT_LE(row.minimumSizeHint().width(), 300);
    EXPECT_GT(row.heightForWidth(300), row.heightForWidth(3000));
}

}  // namespace

}  // namespace kestrelbay
