#include "ui/windows/Sheet.h"

#include <QPushButton>

#include "ui/look/Fonts.h"

namespace kestrelbay {

namespace {

constexpr int kButtonFont = 12;

}  // namespace

Sheet::Sheet(const QString &title, QWidget *parent)
    // Window managers offer to minimise and maximise what does not say what it can.
    : QDialog(parent, Qt::Sheet | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                          Qt::WindowCloseButtonHint) {
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowModality(Qt::WindowModal);
    setWindowTitle(title);
}

QPushButton *Sheet::makeButton(const QString &text, bool primary) {
    auto *button = new QPushButton(text, this);
    button->setFont(systemFont(kButtonFont));
    button->setAutoDefault(true);
    button->setDefault(primary);
    return button;
}

}  // namespace kestrelbay
