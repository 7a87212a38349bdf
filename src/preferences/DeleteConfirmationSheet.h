#pragma once

#include <functional>

#include <QDialog>

namespace kestrelbay {

/// Asks whether the rule of an application shall go. The focus is on Cancel, so that
/// a key pressed too often deletes nothing.
class DeleteConfirmationSheet : public QDialog {
    Q_OBJECT

public:
    /// Shows it as a sheet of the window, or before the whole program without one.
    /// Destroys itself when it closes. `confirmed` is called for Delete only.
    static DeleteConfirmationSheet *open(QWidget *window, const QString &appName,
                                         std::function<void()> confirmed);

private:
    DeleteConfirmationSheet(QWidget *window, const QString &appName);
};

}  // namespace kestrelbay
