#include <chrono>
#include <cmath>

#include <QDialog>
#include <QPushButton>
#include <QTest>

#include "preferences/advanced/AdvancedSettingsFixture.h"
#include "settings/L.h"
#include "ui/look/SystemColors.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace kestrelbay {

namespace {

/// The row of the advanced tab that tells whether the program sees the keyboard.
class AccessRow : public AdvancedSettingsFixture {
protected:
    QPushButton *accessibilityButton() {
        return qobject_cast<QPushButton *>(tab().accessibilityRow()->control());
    }
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
};

TEST_F(AccessRow, WithAccessThereIsNothingToPress) {
    show();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessGranted());
    EXPECT_EQ(tab().accessibilityRow()->control(), nullptr);
}

TEST_F(AccessRow, NamesThePartOfTheDesktopThatKeysComeThrough) {
    tap_.setSourceName(u"sway"_s);
    show();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessGrantedThrough(u"sway"_s));
}

TEST_F(AccessRow, WithoutAccessItSaysWhyAndHowToGetIt) {
    tap_.setPermission(false);
    show();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessMissing(TapProblem::NotPermitted));
    EXPECT_EQ(accessibilityButton()->text(), L::accessOpenSettings());
}

TEST_F(AccessRow, AnExtensionThatIsMissingIsInstalledByOneClick) {
    tap_.setPermission(false);
    tap_.setRefusal(TapProblem::ExtensionMissing);
    desktopExtension_.setState(ExtensionState::Missing);
    show();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::extensionMissing());
    EXPECT_EQ(accessibilityButton()->text(), L::extensionInstall());
    accessibilityButton()->click();
    EXPECT_EQ(desktopExtension_.installations(), 1);
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::extensionAfterLogin());
    EXPECT_EQ(tab().accessibilityRow()->control(), nullptr);
    EXPECT_EQ(rows().size(), 6);
}

TEST_F(AccessRow, AnExtensionThatCannotBeInstalledCanBeTriedAgain) {
    desktopExtension_.setStateAfterInstalling(ExtensionState::Failed);
    tap_.setPermission(false);
    tap_.setRefusal(TapProblem::ExtensionMissing);
    desktopExtension_.setState(ExtensionState::Missing);
    show();
    accessibilityButton()->click();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::extensionFailed());
    accessibilityButton()->click();
    EXPECT_EQ(desktopExtension_.installations(), 2);
}

TEST_F(AccessRow, AnExtensionThatTheDesktopStartsAtOnceGivesAccess) {
    desktopExtension_.setStateAfterInstalling(ExtensionState::Enabled);
    tap_.setPermission(false);
    tap_.setRefusal(TapProblem::ExtensionMissing);
    desktopExtension_.setState(ExtensionState::Missing);
    show();
    tap_.setPermission(true);
    accessibilityButton()->click();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessGranted());
}

TEST_F(AccessRow, AnExtensionIsOfferedForWindowsWhereHotkeysComeWithoutIt) {
    desktopExtension_.setState(ExtensionState::Missing);
    tap_.setSourceName(u"xdg-desktop-portal"_s);
    show();
    const QString access = L::accessGrantedThrough(u"xdg-desktop-portal"_s) + u'\n';
    EXPECT_EQ(subtitle(tab().accessibilityRow()), access + L::extensionForWindows());
    accessibilityButton()->click();
    EXPECT_EQ(desktopExtension_.installations(), 1);
    EXPECT_EQ(subtitle(tab().accessibilityRow()), access + L::extensionAfterLogin());
    EXPECT_EQ(tab().accessibilityRow()->control(), nullptr);
}

TEST_F(AccessRow, SaysThatANewVersionOfTheExtensionWaitsForTheNextLogin) {
    desktopExtension_.setState(ExtensionState::Renewed);
    tap_.setSourceName(u"GNOME Shell"_s);
    show();
    EXPECT_EQ(subtitle(tab().accessibilityRow()),
              L::accessGrantedThrough(u"GNOME Shell"_s) + u'\n' + L::extensionRenewed());
    EXPECT_EQ(tab().accessibilityRow()->control(), nullptr);
}

TEST_F(AccessRow, AccessThatIsGrantedShowsAtOnce) {
    tap_.setPermission(false);
    show();
    tap_.setPermission(true);
    manager().reinstallEventTap();
    EXPECT_NE(accessibilityButton(), nullptr);
    Q_EMIT notifications_.accessibilityGranted();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessGranted());
    EXPECT_EQ(rows().size(), 6);
    EXPECT_EQ(rows().last(), tab().accessibilityRow());
}

TEST_F(AccessRow, AccessThatIsLostShowsAtOnce) {
    show();
    tap_.setPermission(false);
    tap_.disable(EventType::TapDisabledByUserInput);
    Q_EMIT notifications_.keyAccessDidChange();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessMissing(TapProblem::NotPermitted));
    EXPECT_NE(accessibilityButton(), nullptr);
}

TEST_F(AccessRow, KeysThatTheSystemWithholdsShowAtOnceAndAsLongAsItDoes) {
    show();
    tap_.setKeysWithheld(true);
    Q_EMIT notifications_.keyAccessDidChange();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessWithheld());
    EXPECT_EQ(tab().accessibilityRow()->control(), nullptr);
    tap_.setKeysWithheld(false);
    Q_EMIT notifications_.keyAccessDidChange();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessGranted());
    EXPECT_EQ(rows().size(), 6);
}

TEST_F(AccessRow, OutOfViewItHearsNothingButLooksAgainWhenItComesBack) {
    tap_.setPermission(false);
    show();
    tab().hide();
    const SettingRow *const before = tab().accessibilityRow();
    tap_.setPermission(true);
    manager().reinstallEventTap();
    Q_EMIT notifications_.accessibilityGranted();
    EXPECT_EQ(tab().accessibilityRow(), before);
    show();
    EXPECT_EQ(subtitle(tab().accessibilityRow()), L::accessGranted());
    EXPECT_EQ(rows().size(), 6);
}

TEST_F(AccessRow, EveryVisitLeavesOneAccessRow) {
    for (int visit = 0; visit < 3; ++visit) {
        show();
        EXPECT_EQ(rows().size(), 6);
        tab().hide();
    }
}

TEST_F(AccessRow, BackFromTheSettingsWithoutAccessARestartIsOffered) {
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

TEST_F(AccessRow, LaterChangesNothing) {
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

TEST_F(AccessRow, EscapeIsLaterAndReturnIsNow) {
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

TEST_F(AccessRow, TwoClicksOfferOneRestart) {
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

TEST_F(AccessRow, BackFromTheSettingsWithAccessTheTapIsMadeAnew) {
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

TEST_F(AccessRow, ComingBackMeansNothingBeforeTheButtonIsPressed) {
    tap_.setPermission(false);
    show();
    comeBack();
    EXPECT_EQ(restartSheet(), nullptr);
}

TEST_F(AccessRow, WithoutAPlaceForPermissionsItOnlyLooksAgain) {
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

TEST_F(AccessRow, TheButtonKeepsTheFocusWhenTheRowIsMadeAnew) {
    tap_.setPermission(false);
    show();
    accessibilityButton()->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return accessibilityButton()->hasFocus(); }));
    tab().refreshAccessibilityRow();
    EXPECT_TRUE(accessibilityButton()->hasFocus());
}

TEST_F(AccessRow, WithoutARowThereIsNothingToHighlight) {
    tab().highlightAccessibilityRow();
    EXPECT_EQ(timers_.waitingCount(), 0U);
}

TEST_F(AccessRow, TheRowFlashesTwice) {
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

TEST_F(AccessRow, TheHighlightedRowIsScrolledIntoViewAndFocused) {
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

TEST_F(AccessRow, AnotherHighlightReplacesTheFirst) {
    show();
    tab().highlightAccessibilityRow();
    timers_.advance(300ms);
    tab().highlightAccessibilityRow();
    EXPECT_EQ(timers_.waitingCount(), 4U);
}

TEST_F(AccessRow, AHighlightEndsWithItsRow) {
    show();
    tab().highlightAccessibilityRow();
    tab().refreshAccessibilityRow();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(timers_.waitingCount(), 0U);
    EXPECT_EQ(tab().accessibilityRow()->background().alpha(), 0);
}

}  // namespace

}  // namespace kestrelbay
