#pragma once

#include <functional>

#include "ui/windows/Sheet.h"

class QLineEdit;
class QListView;
class QVBoxLayout;

namespace kestrelbay {

class AppPickerModel;
class ApplicationCatalog;
class DispatchQueue;
class TextLabel;
struct PreferencesServices;

/// The sheet in which the user chooses the application of a new rule, from those that
/// are installed or from the file system.
class AppPickerPanel final : public Sheet {
    Q_OBJECT

public:
    /// Side of an application's icon in device-independent pixels.
    static constexpr int kIconSize = 24;

    using Completion = std::function<void(const QString &name, const QString &path)>;

    /// The completion is called after the sheet has gone from the screen, and only when
    /// an application was chosen.
    AppPickerPanel(const PreferencesServices &services, Completion completion, QWidget *parent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addSearchField(QVBoxLayout &column);
    void addList(QVBoxLayout &column);
    void addButtons(QVBoxLayout &column);
    void loadApps();
    /// Those that are still missing, some at a time and in the order of the list, so that its
    /// first page is soon complete.
    void loadIcons();
    void updateEmptyLabel();
    void selectApp();
    void browseFile();
    void finish(const QString &name, const QString &path);

    ApplicationCatalog &catalog_;
    DispatchQueue &mainQueue_;
    DispatchQueue &backgroundQueue_;
    Completion completion_;
    AppPickerModel *model_;
    QLineEdit *searchField_ = nullptr;
    QListView *listView_ = nullptr;
    TextLabel *emptyLabel_ = nullptr;
    bool isLoading_ = true;
};

}  // namespace kestrelbay
