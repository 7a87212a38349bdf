#include "settings/Addresses.h"

#include <gtest/gtest.h>

#include <QUrl>

#include "fakes/FakeWorkspace.h"
#include "fixtures/QtPrinters.h"
#include "settings/L.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

TEST(Addresses, AreUrls) {
    const Addresses addresses = Addresses::of(u"https://example.org/get it"_s,
                                              u"https://example.org/help"_s, u"help@example.org"_s);
    EXPECT_EQ(addresses.downloadPage, u"https://example.org/get%20it"_s);
    EXPECT_EQ(addresses.deepLaunchHelpPage, u"https://example.org/help"_s);
    EXPECT_EQ(addresses.supportMail, u"mailto:help@example.org"_s);
}

TEST(Addresses, WhatIsNotSetIsEmpty) {
    const Addresses addresses = Addresses::of({}, {}, {});
    EXPECT_EQ(addresses.downloadPage, QString());
    EXPECT_EQ(addresses.supportMail, QString());
    EXPECT_EQ(addresses.deepLaunchHelpPage, QString());
}

// Whoever builds the program may choose them, so no more is promised than their form.
TEST(Addresses, ThoseOfThisBuildCanBeOpened) {
    const Addresses addresses = Addresses::ofThisBuild();
    for (const QString &address :
         {addresses.downloadPage, addresses.supportMail, addresses.deepLaunchHelpPage}) {
        const QUrl url(address, QUrl::StrictMode);
        EXPECT_TRUE(address.isEmpty() || (url.isValid() && !url.isRelative()))
            << address.toStdString();
    }
}

TEST(Addresses, OneThatIsMissingIsSaidToBe) {
    FakeWorkspace workspace;
    QStringList notices;
    const auto showToast = [&notices](const QString &message) { notices.append(message); };
    openAddress(u"https://example.org/"_s, workspace, showToast);
    EXPECT_EQ(workspace.requests().take(), QStringList{u"openUrl https://example.org/"_s});
    EXPECT_EQ(notices, QStringList());
    openAddress({}, workspace, showToast);
    EXPECT_EQ(workspace.requests().take(), QStringList());
    EXPECT_EQ(notices, QStringList{L::noAddress()});
}

}  // namespace

}  // namespace kestrelbay
