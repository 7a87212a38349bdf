#include "preferences/picker/AppPickerPanel.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include "platform/ApplicationCatalog.h"
#include "preferences/PreferencesServices.h"
#include "preferences/picker/AppPickerModel.h"
#include "settings/L.h"
#include "tasks/DispatchQueue.h"
#include "ui/look/Drawing.h"
#include "ui/look/Fonts.h"
#include "ui/look/Screens.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

namespace {

constexpr QSize kSize{380, 460};
constexpr int kMargin = 16;
constexpr int kGap = 10;
constexpr int kTitleFont = 15;
constexpr int kTextFont = 13;

constexpr int kRowHeight = 36;
constexpr QSize kIcon{AppPickerPanel::kIconSize, AppPickerPanel::kIconSize};
/// Before the icon, and after the name.
constexpr int kRowMargin = 4;
constexpr int kIconGap = 8;
constexpr qreal kSelectionRadius = 5;
constexpr int kFocusRingWidth = 2;

/// A few screenfuls. Each time the themes are searched anew, for a few milliseconds.
constexpr std::size_t kIconsAtATime = 200;

QString firstExistingFolder(const QStringList &folders) {
    const auto found =
        std::ranges::find_if(folders, [](const QString &folder) { return QDir(folder).exists(); });
    return found == folders.end() ? QDir::rootPath() : *found;
}

/// Paints one row: the icon, then the name on one line.
class AppPickerRow final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override {
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setRenderHint(QPainter::SmoothPixmapTransform);
        if (selected)
            drawRounded(*painter, option.rect, kSelectionRadius, colors::controlAccent());
        else if (option.state.testFlag(QStyle::State_HasFocus))
            drawRounded(*painter, option.rect.adjusted(1, 1, -1, -1), kSelectionRadius, Qt::NoBrush,
                        QPen(colors::focusRing(), kFocusRingWidth));

        const QRect inner = option.rect.adjusted(kRowMargin, 0, -kRowMargin, 0);
        const QRect icon =
            QStyle::alignedRect(option.direction, Qt::AlignLeft | Qt::AlignVCenter, kIcon, inner);
        painter->drawImage(icon, index.data(Qt::DecorationRole).value<QImage>());

        const QRect text = QStyle::alignedRect(
            option.direction, Qt::AlignRight | Qt::AlignVCenter,
            QSize(inner.width() - kIcon.width() - kIconGap, inner.height()), inner);
        painter->setFont(option.font);
        painter->setPen(selected ? colors::onAccent() : colors::label());
        // A line break would push the name out of its row.
        const QString name = index.data(Qt::DisplayRole).toString().simplified();
        painter->drawText(text, Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine,
                          option.fontMetrics.elidedText(name, Qt::ElideRight, text.width()));
        painter->restore();
    }
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem & /*option*/,
                                 const QModelIndex & /*index*/) const override {
        return {0, kRowHeight};
    }
};

}  // namespace

AppPickerPanel::AppPickerPanel(const PreferencesServices &services, Completion completion,
                               QWidget *parent)
    : Sheet(L::appPickerTitle(), parent),
      catalog_(services.catalog),
      mainQueue_(services.mainQueue),
      backgroundQueue_(services.backgroundQueue),
      completion_(std::move(completion)),
      model_(new AppPickerModel(this)) {
    // Meanwhile the sheet is built.
    loadApps();
    setSizeOnScreen(kSize);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    column->setSpacing(kGap);
    column->addWidget(new TextLabel(L::appPickerTitle(), systemFont(kTitleFont, QFont::DemiBold),
                                    colors::label, this));
    addSearchField(*column);
    addList(*column);
    addButtons(*column);
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
    listView_->installEventFilter(this);
    connect(listView_, &QListView::doubleClicked, this, &AppPickerPanel::selectApp);
    column.addWidget(listView_, 1);

    // Which of the colours of a text is shown depends on the ground.
    emptyLabel_ =
        new TextLabel({}, systemFont(kTextFont), colors::tertiaryLabel, listView_->viewport());
    emptyLabel_->setAttribute(Qt::WA_TransparentForMouseEvents);
    auto *middle = new QVBoxLayout(listView_->viewport());
    middle->addWidget(emptyLabel_, 0, Qt::AlignCenter);
    connect(model_, &AppPickerModel::modelReset, this, &AppPickerPanel::updateEmptyLabel);
    updateEmptyLabel();
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
    if (watched == listView_ && event->type() == QEvent::FocusIn) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        // It would show its focus on a row that is not selected.
        if (reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason) {
            const QModelIndex current = listView_->currentIndex();
            listView_->setCurrentIndex(current.isValid() ? current : model_->index(0));
        }
    }
    return Sheet::eventFilter(watched, event);
}

void AppPickerPanel::updateEmptyLabel() {
    emptyLabel_->setText(isLoading_ ? L::appPickerLoading() : L::appPickerNothingFound());
    emptyLabel_->setVisible(model_->rowCount() == 0);
    // It has nothing else to say.
    listView_->setAccessibleDescription(model_->rowCount() == 0 ? emptyLabel_->text() : QString());
}

void AppPickerPanel::loadApps() {
    // The services outlive the work, this sheet may not: the main thread has the last word.
    backgroundQueue_.async([panel = QPointer(this), locale = QLocale::system(), &catalog = catalog_,
                            &mainQueue = mainQueue_] {
        auto list = std::make_shared<const AppPickerList>(catalog.installedApplications(), locale);
        mainQueue.async([panel, list = std::move(list)] {
            if (!panel)
                return;
            panel->isLoading_ = false;
            panel->model_->setList(list);
            panel->loadIcons();
        });
    });
}

void AppPickerPanel::loadIcons() {
    const std::vector<InstalledApplication> &all = model_->list().applications();
    const std::size_t first = model_->iconCount();
    if (first == all.size())
        return;
    QStringList paths;
    for (std::size_t i = first; i < std::min(first + kIconsAtATime, all.size()); ++i)
        paths.append(all[i].path);
    backgroundQueue_.async([panel = QPointer(this), icons = listIconsForScreens(kIconSize), paths,
                            &catalog = catalog_, &mainQueue = mainQueue_] {
        mainQueue.async([panel, images = catalog.listIcons(paths, icons)] {
            if (!panel)
                return;
            panel->model_->addIcons(images);
            panel->loadIcons();
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
    if (auto *const open = findChild<QFileDialog *>(); open && open->isVisible()) {
        open->raise();
        open->activateWindow();
        return;
    }
    auto *dialog = new QFileDialog(this, L::appPickerTitle());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setFileMode(QFileDialog::ExistingFile);
    dialog->setNameFilter(L::appPickerFilter(catalog_.applicationFilePattern()));
    dialog->setDirectory(firstExistingFolder(catalog_.applicationDirectories()));
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) {
        // A name that was typed need not fit the pattern, nor a file its name.
        if (const QString name = catalog_.nameOfFile(path); !name.isEmpty())
            finish(name, path);
    });
    // A panel beside the sheet, not a sheet upon it.
    dialog->setModal(false);
    dialog->show();
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
