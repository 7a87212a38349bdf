#include "preferences/AppPickerPanel.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "app/Fonts.h"
#include "app/SystemColors.h"
#include "app/TextLabel.h"
#include "platform/ApplicationCatalog.h"
#include "platform/DispatchQueue.h"
#include "preferences/AppPickerModel.h"
#include "preferences/AppPickerRow.h"
#include "preferences/PreferencesServices.h"
#include "settings/L.h"

namespace kestrelbay {

namespace {

constexpr QSize kSize{380, 460};
constexpr int kMargin = 16;
constexpr int kGap = 10;
constexpr int kTitleFont = 15;
constexpr int kTextFont = 13;

/// For the screen with the finest pixels, so that the sheet may be moved to it.
ListIcons listIcons() {
    qreal ratio = 1;
    for (const QScreen *screen : QGuiApplication::screens())
        ratio = std::max(ratio, screen->devicePixelRatio());
    return {.pixels = static_cast<int>(std::ceil(AppPickerRow::kIconSize * ratio)),
            .themes = {QIcon::themeName(), QIcon::fallbackThemeName()}};
}

QString nameWithoutExtension(const QString &path) {
    const QFileInfo info(path);
    const QString name = info.completeBaseName();
    return name.isEmpty() ? info.fileName() : name;
}

QString firstExistingFolder(const QStringList &folders) {
    const auto found = std::find_if(folders.begin(), folders.end(),
                                    [](const QString &folder) { return QDir(folder).exists(); });
    return found == folders.end() ? QDir::rootPath() : *found;
}

}  // namespace

AppPickerPanel::AppPickerPanel(const PreferencesServices &services, Completion completion,
                               QWidget *parent)
    : Sheet(kSize, L::appPickerTitle(), parent),
      catalog_(services.catalog),
      completion_(std::move(completion)),
      model_(new AppPickerModel(this)) {
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kGap);
    column->addWidget(new TextLabel(L::appPickerTitle(), systemFont(kTitleFont, QFont::DemiBold),
                                    &colors::label, this));
    addSearchField(*column);
    addList(*column);
    addButtons(*column);
    loadApps(services);
}

void AppPickerPanel::addSearchField(QVBoxLayout &column) {
    searchField_ = new QLineEdit(this);
    searchField_->setFont(systemFont(kTextFont));
    searchField_->setPlaceholderText(L::appPickerSearch());
    searchField_->setAccessibleName(L::appPickerSearch());
    searchField_->setClearButtonEnabled(true);
    searchField_->installEventFilter(this);
    searchField_->setFocus();
    connect(searchField_, &QLineEdit::textChanged, model_, &AppPickerModel::setSearchText);
    column.addWidget(searchField_);
}

void AppPickerPanel::addList(QVBoxLayout &column) {
    listView_ = new QListView(this);
    listView_->setFont(systemFont(kTextFont));
    listView_->setAccessibleName(L::appPickerTitle());
    listView_->setUniformItemSizes(true);
    listView_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    listView_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    listView_->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    listView_->setItemDelegate(new AppPickerRow(listView_));
    listView_->setModel(model_);
    connect(listView_, &QListView::doubleClicked, this, &AppPickerPanel::selectApp);
    column.addWidget(listView_, 1);
}

void AppPickerPanel::addButtons(QVBoxLayout &column) {
    QPushButton *browse = makeButton(L::appPickerBrowse());
    QPushButton *cancel = makeButton(L::cancel());
    QPushButton *select = makeButton(L::appPickerSelect(), true);
    connect(browse, &QPushButton::clicked, this, &AppPickerPanel::browseFile);
    connect(cancel, &QPushButton::clicked, this, &AppPickerPanel::reject);
    connect(select, &QPushButton::clicked, this, &AppPickerPanel::selectApp);
    auto *row = new QHBoxLayout;
    row->addWidget(browse);
    row->addStretch();
    row->addWidget(cancel);
    row->addWidget(select);
    column.addLayout(row);
}

bool AppPickerPanel::eventFilter(QObject *watched, QEvent *event) {
    if (watched == searchField_ && event->type() == QEvent::KeyPress) {
        switch (static_cast<QKeyEvent *>(event)->key()) {
            case Qt::Key_Up:
            case Qt::Key_Down:
            case Qt::Key_PageUp:
            case Qt::Key_PageDown:
                QCoreApplication::sendEvent(listView_, event);
                return true;
            default:
                break;
        }
    }
    return Sheet::eventFilter(watched, event);
}

void AppPickerPanel::loadApps(const PreferencesServices &services) {
    // The services outlive the work, this sheet may not: the main thread has the last word.
    services.backgroundQueue.async([panel = QPointer(this), icons = listIcons(),
                                    locale = QLocale::system(), &catalog = services.catalog,
                                    &mainQueue = services.mainQueue] {
        auto list =
            std::make_shared<const AppPickerList>(catalog.installedApplications(icons), locale);
        mainQueue.async([panel, list = std::move(list)] {
            if (panel)
                panel->model_->setList(list);
        });
    });
}

void AppPickerPanel::selectApp() {
    const QModelIndexList selected = listView_->selectionModel()->selectedRows();
    const InstalledApplication *application =
        selected.isEmpty() ? nullptr : model_->application(selected.front());
    if (application)
        finish(application->name, application->path);
}

void AppPickerPanel::browseFile() {
    auto *dialog = new QFileDialog(this, L::appPickerTitle());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilter(catalog_.applicationFilePattern());
    dialog->setDirectory(firstExistingFolder(catalog_.applicationDirectories()));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) {
        // A name that was typed need not fit the pattern, nor a file its name.
        if (!catalog_.displayName(path).isEmpty())
            finish(nameWithoutExtension(path), path);
    });
    dialog->open();
}

void AppPickerPanel::finish(const QString &name, const QString &path) {
    // Both may refer to what goes with the sheet.
    const Completion completion = std::exchange(completion_, nullptr);
    const std::pair<QString, QString> chosen(name, path);
    accept();
    if (completion)
        completion(chosen.first, chosen.second);
}

}  // namespace kestrelbay
