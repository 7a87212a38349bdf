#pragma once

#include <memory>

#include <QDialog>

#include "platform/SystemAlerts.h"

class QPushButton;

namespace kestrelbay {

/// A panel of one size that holds up the one window it belongs to, and goes when it is
/// closed. To be shown with open(). Escape closes it; Return presses the button that has
/// the focus, and elsewhere the primary one.
class Sheet : public QDialog {
    Q_OBJECT

public:
    Sheet(const QString &title, QWidget *parent);

protected:
    /// A button of the size that sheets have; `primary` makes it the one for Return.
    [[nodiscard]] QPushButton *makeButton(const QString &text, bool primary = false);

    /// Its one size, but no more than the screen has room for.
    void setSizeOnScreen(const QSize &size);
};

/// Who shows alerts in the place of ours; null for nobody. It has to be taken back before it
/// goes. Main thread.
void setSystemAlerts(SystemAlerts *alerts);

/// Tells the user something, and asks where there is a choice: a title, a text, and one or
/// two buttons. Accepted by the one, rejected by the other and by Escape. Where the system has
/// alerts, it is that one which is in view, from the next turn of the event loop on.
class AlertSheet : public Sheet {
    Q_OBJECT

public:
    struct Content {
        QString title;
        QString text;
        QString acceptTitle;
        /// Empty where there is no choice.
        QString rejectTitle{};
        /// Shown with a sign of warning.
        bool isWarning = false;
        /// Accepting destroys something: it is written in red, and the button for Return
        /// is the other, so that a key pressed too often destroys nothing.
        bool isDestructive = false;
    };

    AlertSheet(const Content &content, QWidget *parent);

    void setVisible(bool visible) override;

protected:
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QPushButton *makeAlertButton(const QString &title, bool primary);
    void colorDestructiveButton();
    void showSystemAlert();

    const Content content_;
    std::unique_ptr<SystemAlerts::Shown> systemAlert_;
    QPushButton *destructiveButton_ = nullptr;
};

}  // namespace kestrelbay
