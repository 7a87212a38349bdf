#include <optional>

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QFontMetrics>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include "fixtures/DoubleClick.h"
#include "fixtures/ServicesFixture.h"
#include "preferences/picker/AppPickerPanel.h"

namespace kestrelbay {
namespace {

class AppPickerPanelTest : public ServicesFixture {
protected:
    struct Choice {
        QString name;
        QString path;
        bool panelWasGone = false;
    };

    AppPickerPanelTest() {
        catalog_.setInstalledApplications({entry("Zebra", "zebra"),
                                           entry("Files", "org.x.Nautical"),
                                           entry("apple", "apple"), entry("Zebra", "zebra-2")});
    }
    ~AppPickerPanelTest() override { delete panel_.data(); }

    static InstalledApplication entry(const char *name, const char *fileName) {
        return {.name = QString::fromUtf8(name),
                .fileName = QString::fromUtf8(fileName),
                .path = QStringLiteral("/a/%1.application").arg(QLatin1String(fileName))};
    }

    void open() {
        panel_ = new AppPickerPanel(
            services_,
            [this](const QString &name, const QString &path) {
                choice_ = Choice{name, path, !panel_ || !panel_->isVisible()};
                ++choices_;
            },
            &window_);
        window_.show();
        panel_->open();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel_.data()));
    }
    void load() {
        backgroundQueue_.runAll();
        mainQueue_.runAll();
    }
    void openLoaded() {
        open();
        load();
    }

    [[nodiscard]] QLineEdit &field() const { return *panel_->findChild<QLineEdit *>(); }
    [[nodiscard]] QListView &list() const { return *panel_->findChild<QListView *>(); }
    [[nodiscard]] QPushButton &button(const QString &text) const {
        for (QPushButton *each : panel_->findChildren<QPushButton *>())
            if (each->text() == text)
                return *each;
        throw std::runtime_error("no such button");
    }
    [[nodiscard]] QStringList rows() const {
        QStringList names;
        for (int row = 0; row < list().model()->rowCount(); ++row)
            names.append(list().model()->index(row, 0).data().toString());
        return names;
    }
    [[nodiscard]] int selectedRow() const {
        const QModelIndexList selected = list().selectionModel()->selectedRows();
        return selected.isEmpty() ? -1 : selected.front().row();
    }
    void press(Qt::Key key) const { QTest::keyClick(QApplication::focusWidget(), key); }
    /// What is said in place of applications; empty when nothing is.
    [[nodiscard]] QString remark() const {
        const auto *label = list().findChild<QLabel *>();
        return label->isVisible() ? label->text() : QString();
    }
    [[nodiscard]] bool goes() const {
        return QTest::qWaitFor([this] { return panel_.isNull(); });
    }

    const PreferencesServices services_ = services();
    QWidget window_;
    QPointer<AppPickerPanel> panel_;
    std::optional<Choice> choice_;
    int choices_ = 0;
};

TEST_F(AppPickerPanelTest, ListsApplicationsByNameOnceTheyAreRead) {
    open();
    EXPECT_EQ(panel_->size(), QSize(380, 460));
    EXPECT_TRUE(rows().isEmpty());
    backgroundQueue_.runAll();
    EXPECT_TRUE(rows().isEmpty());
    mainQueue_.runAll();
    EXPECT_EQ(rows(), QStringList({QStringLiteral("apple"), QStringLiteral("Files"),
                                   QStringLiteral("Zebra"), QStringLiteral("Zebra")}));
    EXPECT_EQ(list().visualRect(list().model()->index(1, 0)).height(), 36);
}

TEST_F(AppPickerPanelTest, IconsFollowTheNames) {
    constexpr int kMany = 450;
    std::vector<InstalledApplication> many;
    for (int i = 0; i < kMany; ++i)
        many.push_back(entry(QByteArray::number(1000 + i).constData(), "many"));
    many.push_back(entry("Last", "last"));
    catalog_.setInstalledApplications(many);
    QPixmap red(24, 24);
    red.fill(Qt::red);
    catalog_.add(many.back().path, many.back().name, QIcon(red));
    const auto icon = [this](int row) {
        return list().model()->index(row, 0).data(Qt::DecorationRole).value<QImage>();
    };
    openLoaded();
    ASSERT_EQ(rows().size(), kMany + 1);
    EXPECT_EQ(rows().last(), QStringLiteral("Last"));
    EXPECT_TRUE(icon(0).isNull());

    load();
    EXPECT_EQ(icon(0).size(), QSize(24, 24));
    EXPECT_TRUE(icon(kMany).isNull());
    field().setText(QStringLiteral("last"));
    ASSERT_EQ(rows().size(), 1);
    EXPECT_TRUE(icon(0).isNull());
    const QSignalSpy changes(list().model(), &QAbstractItemModel::dataChanged);
    while (backgroundQueue_.pendingCount() > 0)
        load();
    EXPECT_EQ(icon(0).pixelColor(12, 12), QColor(Qt::red));
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(catalog_.listIconRequests().size(), 3);
}

TEST_F(AppPickerPanelTest, DropsWhatIsReadTooLate) {
    open();
    delete panel_.data();
    backgroundQueue_.runAll();
    mainQueue_.runAll();
    EXPECT_FALSE(choice_);

    open();
    backgroundQueue_.runAll();
    delete panel_.data();
    mainQueue_.runAll();
    EXPECT_FALSE(choice_);

    openLoaded();
    backgroundQueue_.runAll();
    delete panel_.data();
    mainQueue_.runAll();
    EXPECT_EQ(backgroundQueue_.pendingCount(), 0U);
}

TEST_F(AppPickerPanelTest, SearchesAtEachKey) {
    openLoaded();
    EXPECT_EQ(QApplication::focusWidget(), &field());
    QTest::keyClicks(&field(), QStringLiteral("NAUT"));
    EXPECT_EQ(rows(), QStringList(QStringLiteral("Files")));
    field().setText(QStringLiteral("  "));
    EXPECT_EQ(rows().size(), 4);
}

TEST_F(AppPickerPanelTest, ArrowsInTheSearchFieldMoveTheSelection) {
    openLoaded();
    QTest::keyClicks(&field(), QStringLiteral("e"));
    press(Qt::Key_Down);
    EXPECT_EQ(selectedRow(), 0);
    press(Qt::Key_Down);
    EXPECT_EQ(selectedRow(), 1);
    press(Qt::Key_Up);
    press(Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), &field());
    press(Qt::Key_Return);
    ASSERT_TRUE(choice_);
    EXPECT_EQ(choice_->name, QStringLiteral("Files"));
    EXPECT_EQ(choice_->path, QStringLiteral("/a/org.x.Nautical.application"));
    EXPECT_TRUE(choice_->panelWasGone);
    EXPECT_EQ(choices_, 1);
    EXPECT_TRUE(goes());
}

TEST_F(AppPickerPanelTest, ReturnWithoutASelectionDoesNothing) {
    openLoaded();
    press(Qt::Key_Return);
    list().setFocus();
    press(Qt::Key_Return);
    EXPECT_FALSE(choice_);
    EXPECT_TRUE(panel_->isVisible());

    // What was selected before the search is not.
    list().setCurrentIndex(list().model()->index(0, 0));
    field().setText(QStringLiteral("zebra"));
    EXPECT_EQ(selectedRow(), -1);
    press(Qt::Key_Return);
    EXPECT_FALSE(choice_);
}

TEST_F(AppPickerPanelTest, AnEmptyListSaysWhy) {
    open();
    EXPECT_EQ(remark(), QStringLiteral("Looking for apps..."));
    EXPECT_EQ(list().accessibleDescription(), remark());
    QTest::keyClicks(&field(), QStringLiteral("zzz"));
    EXPECT_EQ(remark(), QStringLiteral("Looking for apps..."));
    load();
    EXPECT_EQ(remark(), QStringLiteral("No apps found"));
    EXPECT_EQ(list().accessibleDescription(), remark());
    EXPECT_TRUE(QTest::qWaitFor([this] {
        const QRect place = list().findChild<QLabel *>()->geometry();
        return (place.center() - list().viewport()->rect().center()).manhattanLength() <= 2;
    }));
    field().clear();
    EXPECT_EQ(remark(), QString());
    EXPECT_EQ(list().accessibleDescription(), QString());
}

TEST_F(AppPickerPanelTest, TheTabKeySelectsInTheList) {
    openLoaded();
    press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &list());
    EXPECT_EQ(selectedRow(), 0);
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    press(Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), &field());
    press(Qt::Key_Tab);
    EXPECT_EQ(selectedRow(), 2);
    press(Qt::Key_Return);
    ASSERT_TRUE(choice_);
    EXPECT_EQ(choice_->path, QStringLiteral("/a/zebra.application"));
}

TEST_F(AppPickerPanelTest, ReturnPressesTheButtonThatHasTheFocus) {
    openLoaded();
    press(Qt::Key_Down);
    button(QStringLiteral("Browse...")).setFocus();
    press(Qt::Key_Return);
    const QPointer<QFileDialog> dialog = panel_->findChild<QFileDialog *>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_FALSE(choice_);
    dialog->reject();
    button(QStringLiteral("Cancel")).setFocus();
    QTest::keyClick(&button(QStringLiteral("Cancel")), Qt::Key_Return);
    EXPECT_TRUE(goes());
    EXPECT_FALSE(choice_);
}

TEST_F(AppPickerPanelTest, ADoubleClickChooses) {
    openLoaded();
    const QModelIndex row = list().model()->index(3, 0);
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, list().visualRect(row).center());
    doubleClick(list().viewport(), list().visualRect(row).center());
    ASSERT_TRUE(choice_);
    EXPECT_EQ(choice_->path, QStringLiteral("/a/zebra-2.application"));
}

TEST_F(AppPickerPanelTest, EscapeAndCancelChooseNothing) {
    openLoaded();
    press(Qt::Key_Down);
    press(Qt::Key_Escape);
    EXPECT_TRUE(goes());
    openLoaded();
    press(Qt::Key_Down);
    button(QStringLiteral("Cancel")).click();
    EXPECT_TRUE(goes());
    EXPECT_FALSE(choice_);
}

TEST_F(AppPickerPanelTest, BrowsingTakesApplicationsOnly) {
    const QString folder = storageDirectory();
    for (const char *name : {"my.tool.application", "text.application"}) {
        QFile file(folder + u'/' + QLatin1String(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }
    const QString tool = folder + QStringLiteral("/my.tool.application");
    catalog_.add(tool, QStringLiteral("Shown Name"));
    catalog_.setApplicationDirectories({QStringLiteral("/no/such/folder"), folder});
    openLoaded();

    button(QStringLiteral("Browse...")).click();
    QPointer<QFileDialog> dialog = panel_->findChild<QFileDialog *>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->windowModality(), Qt::NonModal) << "it is a panel of its own";
    button(QStringLiteral("Browse...")).click();
    EXPECT_EQ(panel_->findChildren<QFileDialog *>().size(), 1);
    EXPECT_EQ(dialog->fileMode(), QFileDialog::ExistingFile);
    EXPECT_EQ(dialog->nameFilters(), QStringList(QStringLiteral("Applications (*.application)")));
    EXPECT_EQ(dialog->directory().path(), folder);
    Q_EMIT dialog->fileSelected(folder + QStringLiteral("/text.application"));
    EXPECT_FALSE(choice_);
    EXPECT_TRUE(panel_->isVisible());
    dialog->reject();
    EXPECT_FALSE(choice_);
    EXPECT_TRUE(panel_->isVisible());

    Q_EMIT dialog->fileSelected(tool);
    ASSERT_TRUE(choice_);
    EXPECT_EQ(choice_->name, QStringLiteral("Shown Name"));
    EXPECT_EQ(choice_->path, tool);
    EXPECT_TRUE(goes());
}

TEST_F(AppPickerPanelTest, BothLanguagesFit) {
    for (const Language language : {Language::en, Language::zh}) {
        choose(language);
        openLoaded();
        int right = 0;
        for (const QString &text :
             language == Language::en
                 ? QStringList{QStringLiteral("Browse..."), QStringLiteral("Cancel"),
                               QStringLiteral("Select")}
                 : QStringList{QString::fromUtf8("从文件系统选择..."), QString::fromUtf8("取消"),
                               QString::fromUtf8("选择")}) {
            const QPushButton &each = button(text);
            EXPECT_GE(each.width(), each.sizeHint().width()) << text.toStdString();
            EXPECT_GE(each.x(), right) << text.toStdString();
            right = each.geometry().right();
        }
        EXPECT_LT(right, panel_->width());
        EXPECT_FALSE(field().accessibleName().isEmpty());
        EXPECT_FALSE(list().accessibleName().isEmpty());
        delete panel_.data();
    }
}

}  // namespace
}  // namespace kestrelbay
