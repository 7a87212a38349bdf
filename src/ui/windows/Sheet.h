#pragma once

#include <QDialog>

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
};

}  // namespace kestrelbay
