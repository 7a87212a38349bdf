#include "preferences/DeleteConfirmationSheet.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

#include "app/Fonts.h"
#include "app/SystemColors.h"
#include "app/TextLabel.h"
#include "preferences/SymbolView.h"
#include "settings/L.h"

namespace kestrelbay {

namespace {

constexpr int kWidth = 400;
constexpr int kMargin = 20;
constexpr int kIconSide = 40;
constexpr int kButtonWidth = 88;

/// A button that destroys something says so by its colour too.
class DestructiveButton final : public QPushButton {
public:
    using QPushButton::QPushButton;

    void colorText() {
        QPalette ours = palette();
        ours.setColor(QPalette::ButtonText, colors::systemRed());
        setPalette(ours);
    }

protected:
    void changeEvent(QEvent *event) override {
        QPushButton::changeEvent(event);
        if (event->type() == QEvent::ApplicationPaletteChange)
            colorText();
    }
};

}  // namespace

DeleteConfirmationSheet *DeleteConfirmationSheet::open(QWidget *window, const QString &appName,
                                                       std::function<void()> confirmed) {
    auto *sheet = new DeleteConfirmationSheet(window, appName);
    connect(sheet, &QDialog::accepted, sheet, std::move(confirmed));
    sheet->show();
    return sheet;
}

DeleteConfirmationSheet::DeleteConfirmationSheet(QWidget *window, const QString &appName)
    : QDialog(window, window ? Qt::Sheet | Qt::Dialog : Qt::Dialog) {
    setWindowModality(window ? Qt::WindowModal : Qt::ApplicationModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(L::deleteConfirmTitle());
    setAccessibleDescription(L::deleteConfirmMsg(appName));

    auto *sign = new SymbolView(this);
    sign->setSymbol(QStringLiteral("exclamationmark.triangle.fill"), colors::systemOrange);
    sign->setFixedSize(kIconSide, kIconSide);
    auto *title =
        new TextLabel(L::deleteConfirmTitle(), systemFont(13, QFont::Bold), colors::label, this);
    auto *text = new TextLabel(L::deleteConfirmMsg(appName), systemFont(12), colors::label, this);
    text->setWordWrap(true);

    auto *remove = new DestructiveButton(L::deleteConfirmButton(), this);
    remove->colorText();
    auto *cancel = new QPushButton(L::cancel(), this);
    for (QPushButton *button : {static_cast<QPushButton *>(remove), cancel}) {
        button->setFont(systemFont(13));
        button->setMinimumWidth(kButtonWidth);
        button->setAutoDefault(true);
    }
    cancel->setDefault(true);
    connect(remove, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *words = new QVBoxLayout;
    words->setSpacing(6);
    words->addWidget(title);
    words->addWidget(text);
    words->addStretch();
    auto *top = new QHBoxLayout;
    top->setSpacing(16);
    top->addWidget(sign, 0, Qt::AlignTop);
    top->addLayout(words, 1);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(10);
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(remove);
    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    all->setSpacing(18);
    all->addLayout(top);
    all->addLayout(buttons);
    setTabOrder(remove, cancel);
    cancel->setFocus();
    setFixedWidth(kWidth);
}

}  // namespace kestrelbay
