#include "app/RuleList.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {
namespace {

class RuleListTest : public testing::Test {
protected:
    QByteArray list(const QByteArray &file, RuleListFormat format) {
        const QString path = folder_.filePath(QStringLiteral("rules.json"));
        QFile written(path);
        EXPECT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(file);
        written.close();
        return ruleList(RuleFile(path).load(), format);
    }
    QByteArray text(const QByteArray &file) { return list(file, RuleListFormat::Text); }

    QTemporaryDir folder_;
};

TEST_F(RuleListTest, HasALineForEachRule) {
    EXPECT_EQ(text(R"([{"id": "3f2a9c1e-6b7d-4e21-9a0c-5d8e7f1b2c3d", "appName": "Terminal",
                        "keyCode": 17, "modifierFlags": 1048584},
                       {"id": "0B1C2D3E-4F50-4617-8293-A4B5C6D7E8F9", "appName": "备忘录"}])"),
              "3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D\tTerminal\tL⌘T\n"
              "0B1C2D3E-4F50-4617-8293-A4B5C6D7E8F9\t备忘录\t-\n");
    EXPECT_EQ(text("[]"), "");
}

TEST_F(RuleListTest, NamesDoNotBreakItsLines) {
    EXPECT_EQ(text(R"([{"id": "3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D",
                        "appName": "a\tb\nc\u0000\u001bd\u0085e"}])"),
              "3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D\ta b c  d e\t-\n");
}

TEST_F(RuleListTest, AnIdThatIsNotInTheFileIsNotMadeUp) {
    EXPECT_EQ(text(R"([{"appName": "A"}, {"appName": "B", "id": "5"}])"), "-\tA\t-\n-\tB\t-\n");
    const QByteArray json = list(R"([{"appName": "A"}])", RuleListFormat::Json);
    EXPECT_TRUE(QJsonDocument::fromJson(json).array().at(0)["id"_L1].isNull());
}

TEST_F(RuleListTest, IsAnArrayInJson) {
    const QByteArray json = list(R"([{"id": "3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D",
                                      "appName": "a\n\"b\"", "appPath": "/apps/a", "keyCode": 17,
                                      "modifierFlags": 1048584, "isEnabled": false}])",
                                 RuleListFormat::Json);
    EXPECT_TRUE(json.endsWith("]\n"));
    EXPECT_EQ(json.count('\n'), 1);
    const QJsonArray rules = QJsonDocument::fromJson(json).array();
    ASSERT_EQ(rules.size(), 1);
    EXPECT_EQ(rules.at(0).toObject(),
              (QJsonObject{{u"id"_s, u"3F2A9C1E-6B7D-4E21-9A0C-5D8E7F1B2C3D"_s},
                           {u"appName"_s, u"a\n\"b\""_s},
                           {u"appPath"_s, u"/apps/a"_s},
                           {u"hotkey"_s, u"L⌘T"_s},
                           {u"isEnabled"_s, false}}));
    EXPECT_EQ(list("[]", RuleListFormat::Json), "[]\n");
}

}  // namespace
}  // namespace kestrelbay
