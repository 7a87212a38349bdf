#include "settings/Addresses.h"

#include <gtest/gtest.h>

#include <QUrl>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

// Whoever builds the program may choose others, so no more is promised than their form.

TEST(Addresses, PagesAreWebPages) {
    for (const QString &text : {addresses::downloadPage(), addresses::deepLaunchHelpPage()}) {
        const QUrl page(text, QUrl::StrictMode);
        EXPECT_TRUE(page.isValid()) << page.errorString().toStdString();
        EXPECT_EQ(page.scheme(), u"https"_s);
        EXPECT_FALSE(page.host().isEmpty());
    }
    EXPECT_NE(addresses::downloadPage(), addresses::deepLaunchHelpPage());
}

TEST(Addresses, SupportIsAMailbox) {
    const QUrl mail(addresses::supportMail(), QUrl::StrictMode);
    EXPECT_TRUE(mail.isValid());
    EXPECT_EQ(mail.scheme(), u"mailto"_s);
    EXPECT_TRUE(mail.path().contains(u'@'));
    EXPECT_EQ(mail.toString(), u"mailto:"_s + mail.path());
}

}  // namespace

}  // namespace kestrelbay
