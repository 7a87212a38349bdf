#include "app/process/QtArguments.h"

#include <gtest/gtest.h>

#include <array>

#include "fixtures/QtPrinters.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {
namespace {

class QtArgumentsTest : public ::testing::Test {
protected:
    /// What Qt gets of them.
    QStringList given(const QString &platform) {
        QtArguments arguments(static_cast<int>(pointers_.size()) - 1, pointers_.data(), platform);
        QStringList values;
        for (char **value = arguments.values(); *value != nullptr; ++value)
            values.append(QString::fromLocal8Bit(*value));
        EXPECT_EQ(arguments.count(), values.size());
        return values;
    }

    QByteArray program_{"kestrelbay"};
    QByteArray option_{"-platform"};
    QByteArray user_{"wayland"};
    std::array<char *, 4> pointers_{program_.data(), option_.data(), user_.data(), nullptr};
};

TEST_F(QtArgumentsTest, ThePlatformComesBeforeTheUsersOwnArguments) {
    EXPECT_EQ(given(u"xcb"_s), (QStringList{u"kestrelbay"_s, u"-platform"_s, u"xcb"_s,
                                            u"-platform"_s, u"wayland"_s}));
}

TEST_F(QtArgumentsTest, WithoutOneTheyStayAsTheyAre) {
    EXPECT_EQ(given({}), (QStringList{u"kestrelbay"_s, u"-platform"_s, u"wayland"_s}));
}

}  // namespace
}  // namespace kestrelbay
