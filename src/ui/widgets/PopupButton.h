#pragma once

#include <QComboBox>

#include <optional>

namespace kestrelbay {

/// A choice of one among several titles. Its list is as wide as the widest of them, however
/// narrow the button is, and a key that is pressed while it is open is the list's alone.
class PopupButton : public QComboBox {
    Q_OBJECT

public:
    using QComboBox::QComboBox;

    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// The list was asked whether it has a use for that key, and has not been given it yet.
    std::optional<int> keyOfList_;
};

}  // namespace kestrelbay
