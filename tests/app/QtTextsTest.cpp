#include "app/QtTexts.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include "fakes/FakeUserDefaults.h"
#include "fixtures/QtPrinters.h"
#include "settings/Language.h"
#include "settings/Notifications.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

/// A translation file with one message.
const QByteArray kTranslation = QByteArray::fromBase64(
    "PLhkGMrvnJXNIRy/"
    "YKG93UIAAAAIACqmeQAAAABpAAAAOAMAAAAMWQ1SNgAoACYAQwApCAAAAAAGAAAABSZDb3B5BwAAABJR"
    "V2lkZ2V0VGV4dENvbnRyb2wB");

QString copyEntry() {
    return QCoreApplication::translate("QWidgetTextControl", "&Copy");
}

class QtTextsTest : public testing::Test {
protected:
    QtTextsTest() { Language::setDefaults(&defaults_); }
    ~QtTextsTest() override { Language::setDefaults(nullptr); }

    void choose(Language language) {
        defaults_.setString(u"appLanguage"_s, language.rawValue());
        Q_EMIT notifications_.languageDidChange();
    }
    void installTranslation() const {
        QFile file(folder_.filePath(u"qtbase_zh_CN.qm"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(kTranslation);
    }

    FakeUserDefaults defaults_;
    Notifications notifications_;
    QTemporaryDir folder_;
};

TEST_F(QtTextsTest, FollowTheLanguageFromTheStart) {
    installTranslation();
    choose(Language::zh);
    {
        const QtTexts texts(notifications_, folder_.path());
        EXPECT_EQ(copyEntry(), u"复制(&C)"_s);
        choose(Language::en);
        EXPECT_EQ(copyEntry(), u"&Copy"_s);
        choose(Language::zh);
        EXPECT_EQ(copyEntry(), u"复制(&C)"_s);
    }
    EXPECT_EQ(copyEntry(), u"&Copy"_s);
}

TEST_F(QtTextsTest, StayEnglishWithoutATranslation) {
    choose(Language::zh);
    const QtTexts texts(notifications_, folder_.path());
    EXPECT_EQ(copyEntry(), u"&Copy"_s);
}

}  // namespace

}  // namespace kestrelbay
