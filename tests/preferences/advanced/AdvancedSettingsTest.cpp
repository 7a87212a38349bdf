#include "preferences/advanced/AdvancedSettingsViewController.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>

#include "preferences/advanced/AdvancedSettingsFixture.h"
#include "settings/L.h"
#include "ui/widgets/Switch.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

class AdvancedSettings : public AdvancedSettingsFixture {
protected:
    QStringList titles() {
        QStringList all;
        for (const SettingRow *row : rows())
            all.append(row->findChildren<QLabel *>().at(0)->text());
        return all;
    }
    Switch *launchSwitch() { return tab().findChild<Switch *>(); }
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
