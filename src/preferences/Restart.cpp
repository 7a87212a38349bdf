#include "preferences/Restart.h"

#include <algorithm>
#include <utility>

#include <QCoreApplication>
#include <QDialog>
#include <QHBoxLayout>
#include <QProcess>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/Fonts.h"
#include "app/SystemColors.h"
#include "app/TextLabel.h"
#include "settings/L.h"

using namespace Qt::StringLiterals;

namespace kestrelbay {

namespace {

constexpr int kWidth = 400;
constexpr int kMargin = 20;
constexpr int kTextFont = 12;
constexpr int kFont = 13;
constexpr int kButtonWidth = 88;
constexpr int kButtonPadding = 12;

QPushButton *makeButton(const QString &title) {
    auto *const button = new QPushButton(title);
    button->setFont(systemFont(kFont));
    button->setMinimumWidth(std::max(kButtonWidth, button->sizeHint().width() + kButtonPadding));
    return button;
}

}  // namespace

Command restartCommand(const QString &executablePath) {
    const qsizetype inBundle = executablePath.lastIndexOf(".app/Contents/MacOS/"_L1);
    if (inBundle < 0)
        return {executablePath, {}};
    return {u"/usr/bin/open"_s, {executablePath.first(inBundle + ".app"_L1.size())}};
}

void restartProgram() {
    const Command command = restartCommand(QCoreApplication::applicationFilePath());
    QProcess::startDetached(command.program, command.arguments);
    QCoreApplication::quit();
}

QDialog *openRestartSheet(QWidget *window, std::function<void()> confirmed) {
    auto *const sheet = new QDialog(window, Qt::Sheet | Qt::Dialog);
    sheet->setObjectName(u"restart"_s);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->setWindowModality(Qt::WindowModal);
    sheet->setWindowTitle(L::restartTitle());
    sheet->setAccessibleDescription(L::restartText());

    auto *const text = new TextLabel(L::restartText(), systemFont(kTextFont), colors::label);
    text->setWordWrap(true);
    auto *const now = makeButton(L::restartNow());
    auto *const later = makeButton(L::restartLater());
    now->setDefault(true);
    QObject::connect(now, &QPushButton::clicked, sheet, &QDialog::accept);
    QObject::connect(later, &QPushButton::clicked, sheet, &QDialog::reject);
    QObject::connect(sheet, &QDialog::accepted, sheet, std::move(confirmed));

    auto *const buttons = new QHBoxLayout;
    buttons->setSpacing(10);
    buttons->addStretch();
    buttons->addWidget(later);
    buttons->addWidget(now);
    auto *const all = new QVBoxLayout(sheet);
    all->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    all->setSpacing(6);
    all->addWidget(new TextLabel(L::restartTitle(), systemFont(kFont, QFont::Bold), colors::label));
    all->addWidget(text);
    all->addSpacing(12);
    all->addLayout(buttons);
    QWidget::setTabOrder(now, later);
    now->setFocus();
    sheet->setFixedWidth(kWidth);
    sheet->open();
    return sheet;
}

}  // namespace kestrelbay
