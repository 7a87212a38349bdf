#pragma once

#include <QComboBox>

namespace kestrelbay {

/// A choice of one among several titles. Its list is as wide as the widest of them, however
/// narrow the button is.
class PopupButton : public QComboBox {
    Q_OBJECT

public:
    using QComboBox::QComboBox;

    void showPopup() override;
};

}  // namespace kestrelbay
