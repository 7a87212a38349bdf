#include "preferences/Sheet.h"

#include <QPushButton>

#include "app/Fonts.h"

namespace kestrelbay {

namespace {

constexpr int kButtonFont = 12;

}  // namespace

Sheet::Sheet(QSize size, const QString &title, QWidget *parent)
    : QDialog(parent, Qt::Sheet | Qt::Dialog) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setWindowTitle(title);
    setFixedSize(size);
}

QPushButton *Sheet::makeButton(const QString &text, bool primary) {
    auto *button = new QPushButton(text, this);
    button->setFont(systemFont(kButtonFont));
    // Else Return would press whichever button has the focus.
    button->setAutoDefault(false);
    button->setDefault(primary);
    return button;
}

}  // namespace kestrelbay
