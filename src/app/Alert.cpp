#include "app/Alert.h"

#include <algorithm>
#include <utility>

#include <QDialog>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/Fonts.h"
#include "app/Symbols.h"
#include "app/SystemColors.h"
#include "app/TextLabel.h"
#include "settings/L.h"

namespace kestrelbay {

namespace {

constexpr int kMargin = 20;
constexpr int kSymbolSize = 40;
constexpr int kSymbolToText = 16;
constexpr int kMessageToInformation = 8;
constexpr int kTextToButton = 20;
constexpr int kTextWidth = 320;
constexpr int kMessageFont = 14;
constexpr int kInformationFont = 13;
constexpr int kButtonMinimumWidth = 80;

std::function<void(QDialog &)> &alertRunner() {
    static std::function<void(QDialog &)> runner;
    return runner;
}

class WarningSymbol final : public QWidget {
public:
    explicit WarningSymbol(QWidget *parent) : QWidget(parent) {
        setFixedSize(kSymbolSize, kSymbolSize);
    }

protected:
    void paintEvent(QPaintEvent * /*event*/) override {
        QPainter(this).drawPixmap(
            rect(), symbolPixmap(QStringLiteral("exclamationmark.triangle.fill"), size(),
                                 colors::systemOrange(), devicePixelRatioF()));
    }
};

TextLabel *makeText(const QString &text, const QFont &font, TextLabel::Color color) {
    auto *label = new TextLabel(text, font, color);
    label->setWordWrap(true);
    // A word, such as a path, may be wider than the line.
    const int width = std::max(kTextWidth, label->minimumSizeHint().width());
    label->setFixedSize(width, label->heightForWidth(width));
    return label;
}

}  // namespace

void setAlertRunner(std::function<void(QDialog &)> runner) {
    alertRunner() = std::move(runner);
}

void showAlert(QWidget *parent, const LaunchAtLogin::Failure &failure) {
    QDialog alert(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                              Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    alert.setWindowTitle(L::programName());
    alert.setModal(true);
    alert.setAccessibleName(failure.messageText);
    alert.setAccessibleDescription(failure.informativeText);

    auto *button = new QPushButton(failure.buttonTitle);
    button->setFont(systemFont(kInformationFont, QFont::Medium));
    button->setDefault(true);
    button->setMinimumWidth(kButtonMinimumWidth);
    QObject::connect(button, &QPushButton::clicked, &alert, &QDialog::accept);

    auto *texts = new QVBoxLayout;
    texts->setSpacing(kMessageToInformation);
    texts->addWidget(
        makeText(failure.messageText, systemFont(kMessageFont, QFont::DemiBold), colors::label));
    texts->addWidget(
        makeText(failure.informativeText, systemFont(kInformationFont), colors::secondaryLabel));

    auto *row = new QHBoxLayout;
    row->setSpacing(kSymbolToText);
    row->addWidget(new WarningSymbol(&alert), 0, Qt::AlignTop);
    row->addLayout(texts);

    auto *layout = new QVBoxLayout(&alert);
    layout->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    layout->setSpacing(kTextToButton);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->addLayout(row);
    layout->addWidget(button, 0, Qt::AlignRight);

    if (const auto &runner = alertRunner())
        runner(alert);
    else
        alert.exec();
}

}  // namespace kestrelbay
