#include <gtest/gtest.h>

#include <chrono>
#include <iostream>

#include "fixtures/QtPrinters.h"
#include "preferences/picker/AppPickerModel.h"

namespace kestrelbay {
namespace {

InstalledApplication application(const QString &name, const QString &fileName = {},
                                 const QString &folder = QStringLiteral("/a/")) {
    const QString file = fileName.isEmpty() ? name : fileName;
    return {.name = name, .fileName = file, .path = folder + file};
}

AppPickerList listOf(const QStringList &names, const QLocale &locale = QLocale::English) {
    std::vector<InstalledApplication> applications;
    applications.reserve(static_cast<std::size_t>(names.size()));
    for (const QString &name : names)
        applications.push_back(application(name, QStringLiteral("#")));
    return {std::move(applications), locale};
}

QStringList names(const AppPickerList &list, const QString &searchText = {}) {
    QStringList result;
    for (const int at : list.matching(searchText))
        result.append(list.applications()[static_cast<std::size_t>(at)].name);
    return result;
}

QStringList words(const char *text) {
    return QString::fromUtf8(text).split(u'|');
}

TEST(AppPickerListTest, NamesAreSortedWithoutRegardToCase) {
    EXPECT_EQ(names(listOf(words("zebra|Éditeur|Zoo|editor|apple|Eve|Apple"))),
              words("apple|Apple|Éditeur|editor|Eve|zebra|Zoo"));
}

TEST(AppPickerListTest, TheSystemsPlainLocaleSortsLikeEnglish) {
    EXPECT_EQ(names(listOf(words("Zoo|Écran|apple"), QLocale::c())), words("apple|Écran|Zoo"));
}

TEST(AppPickerListTest, ChineseNamesAreSortedAsTheirReadersExpect) {
    EXPECT_EQ(
        names(listOf(words("终端|文件|备忘录|日历"), QLocale(QLocale::Chinese, QLocale::China))),
        words("备忘录|日历|文件|终端"));
}

TEST(AppPickerListTest, EqualNamesKeepTheOrderInWhichTheyCame) {
    const AppPickerList list({application(QStringLiteral("Same"), {}, QStringLiteral("/1/")),
                              application(QStringLiteral("A")),
                              application(QStringLiteral("same"), {}, QStringLiteral("/2/")),
                              application(QStringLiteral("Same"), {}, QStringLiteral("/3/"))},
                             QLocale::English);
    QStringList paths;
    for (const InstalledApplication &each : list.applications())
        paths.append(each.path);
    EXPECT_EQ(paths, words("/a/A|/1/Same|/2/same|/3/Same"));
}

TEST(AppPickerListTest, NothingButSpacesShowsAll) {
    const AppPickerList list = listOf(words("A|B"));
    for (const char *text : {"", " ", " \t ", "\u3000"})
        EXPECT_EQ(names(list, QString::fromUtf8(text)), words("A|B")) << text;
    EXPECT_TRUE(names(list, QStringLiteral("\n")).isEmpty());
}

TEST(AppPickerListTest, SearchLooksIntoNamesInAnyCase) {
    const AppPickerList list = listOf(words("Text Editor|Éclair|文件管理器|Straße|Terminal"));
    EXPECT_EQ(names(list, QStringLiteral("EDIT")), words("Text Editor"));
    EXPECT_EQ(names(list, QStringLiteral("  t e  ")), words("Text Editor"));
    EXPECT_EQ(names(list, QString::fromUtf8("éCL")), words("Éclair"));
    // Written as a letter and an accent of its own.
    EXPECT_EQ(names(list, QString::fromUtf8("e\u0301cl")), words("Éclair"));
    EXPECT_TRUE(names(list, QStringLiteral("ecl")).isEmpty());
    EXPECT_EQ(names(list, QString::fromUtf8("管理")), words("文件管理器"));
    EXPECT_EQ(names(list, QStringLiteral("STRASSE")), words("Straße"));
    EXPECT_TRUE(names(list, QStringLiteral("no such")).isEmpty());
}

TEST(AppPickerListTest, SearchLooksIntoFileNamesInAnyCase) {
    const AppPickerList list(
        {application(QString::fromUtf8("文件"), QStringLiteral("org.example.Files"))},
        QLocale::English);
    EXPECT_EQ(names(list, QStringLiteral("EXAMPLE.f")), words("文件"));
    EXPECT_TRUE(names(list, QStringLiteral(".desktop")).isEmpty());
}

TEST(AppPickerListTest, CasesAreThoseOfTheUsersLanguage) {
    const QLocale turkish(QLocale::Turkish);
    EXPECT_EQ(names(listOf(words("İstanbul|Irmak"), turkish), QStringLiteral("i")),
              words("İstanbul"));
    EXPECT_EQ(names(listOf(words("İstanbul|Irmak"), turkish), QString::fromUtf8("ı")),
              words("Irmak"));
}

TEST(AppPickerListTest, MatchesStayInOrder) {
    EXPECT_EQ(names(listOf(words("xb|b|xa|a")), QStringLiteral("X")), words("xa|xb"));
}

TEST(AppPickerListTest, ManyApplications) {
    std::vector<InstalledApplication> many;
    many.reserve(2000);
    for (int i = 0; i < 2000; ++i)
        many.push_back(application(QStringLiteral("Application %1").arg((i * 7919) % 2000),
                                   QStringLiteral("org.example.app%1").arg(i)));
    using Clock = std::chrono::steady_clock;
    const auto milliseconds = [](Clock::duration time) {
        return std::chrono::duration<double, std::milli>(time).count();
    };
    const auto start = Clock::now();
    const AppPickerList list(std::move(many), QLocale::English);
    const auto made = Clock::now();
    const std::size_t found = list.matching(QStringLiteral("application 1")).size();
    const auto searched = Clock::now();
    EXPECT_EQ(found, 1111U);
    std::cout << "2000 applications: sorted in " << milliseconds(made - start)
              << " ms, searched in " << milliseconds(searched - made) << " ms\n";
}

TEST(AppPickerModelTest, ShowsWhatMatches) {
    AppPickerModel model;
    EXPECT_EQ(model.rowCount(), 0);
    // What was typed while the list was being read counts.
    model.setSearchText(QStringLiteral("b"));
    model.setList(std::make_shared<AppPickerList>(listOf(words("Abc|Beta|Gamma"))));
    ASSERT_EQ(model.rowCount(), 2);
    EXPECT_EQ(model.index(1).data().toString(), QStringLiteral("Beta"));
    ASSERT_NE(model.application(model.index(0)), nullptr);
    EXPECT_EQ(model.application(model.index(0))->name, QStringLiteral("Abc"));
    EXPECT_EQ(model.application(model.index(2)), nullptr);
    EXPECT_EQ(model.application({}), nullptr);
    model.setSearchText({});
    EXPECT_EQ(model.rowCount(), 3);
}

}  // namespace
}  // namespace kestrelbay
