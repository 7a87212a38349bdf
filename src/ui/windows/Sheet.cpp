#include "ui/windows/Sheet.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include <algorithm>

#include "ui/look/Fonts.h"
#include "ui/look/Symbols.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/TextLabel.h"

namespace kestrelbay {

namespace {

/// Without a word that needs more.
constexpr int kWidth = 400;
constexpr int kMargin = 20;
constexpr int kSignSide = 40;
constexpr int kSignToText = 16;
constexpr int kTitleToText = 6;
constexpr int kTextToButtons = 18;
constexpr int kButtonSpacing = 10;
constexpr int kButtonFont = 12;
constexpr int kTitleFont = 13;
constexpr int kTextFont = 12;
constexpr int kAnswerFont = 13;
constexpr int kAnswerWidth = 88;

SystemAlerts *systemAlerts = nullptr;

class WarningSign final : public QWidget {
public:
    explicit WarningSign(QWidget *parent) : QWidget(parent) { setFixedSize(kSignSide, kSignSide); }

protected:
    void paintEvent(QPaintEvent * /*event*/) override {
        QPainter(this).drawPixmap(
            rect(), symbolPixmap(QStringLiteral("exclamationmark.triangle.fill"), size(),
                                 colors::systemOrange(), devicePixelRatioF()));
    }
};

TextLabel *makeText(const QString &text, const QFont &font, int width, QWidget *parent) {
    auto *label = new TextLabel(text, font, colors::label, parent);
    label->setWordWrap(true);
    // A word, such as a path, may be wider than the line.
    const int needed = std::max(width, label->minimumSizeHint().width());
    label->setFixedSize(needed, label->heightForWidth(needed));
    return label;
}

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
    button->setMinimumWidth(std::max(kAnswerWidth, button->sizeHint().width()));
    button->setAutoDefault(true);
    button->setDefault(primary);
    return button;
}

void Sheet::setSizeOnScreen(const QSize &size) {
    // It will have a frame like that of the window that it belongs to.
    const QWidget *const window = parentWidget()->window();
    const QSize frame = window->frameGeometry().size() - window->size();
    setFixedSize(size.boundedTo(screen()->availableSize() - frame));
}

void setSystemAlerts(SystemAlerts *alerts) {
    systemAlerts = alerts;
}

AlertSheet::AlertSheet(const Content &content, QWidget *parent)
    : Sheet(content.title, parent), content_(content) {
    setAccessibleDescription(content.text);

    auto *top = new QHBoxLayout;
    top->setSpacing(kSignToText);
    int textWidth = kWidth - 2 * kMargin;
    if (content.isWarning) {
        top->addWidget(new WarningSign(this), 0, Qt::AlignTop);
        textWidth -= kSignSide + kSignToText;
    }
    auto *texts = new QVBoxLayout;
    texts->setSpacing(kTitleToText);
    texts->addWidget(makeText(content.title, systemFont(kTitleFont, QFont::Bold), textWidth, this));
    texts->addWidget(makeText(content.text, systemFont(kTextFont), textWidth, this));
    texts->addStretch();
    top->addLayout(texts);

    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(kButtonSpacing);
    buttons->addStretch();
    if (!content.rejectTitle.isEmpty()) {
        QPushButton *reject = makeAlertButton(content.rejectTitle, content.isDestructive);
        connect(reject, &QPushButton::clicked, this, &QDialog::reject);
        buttons->addWidget(reject);
    }
    QPushButton *accept = makeAlertButton(content.acceptTitle, !content.isDestructive);
    connect(accept, &QPushButton::clicked, this, &QDialog::accept);
    buttons->addWidget(accept);
    if (content.isDestructive) {
        destructiveButton_ = accept;
        colorDestructiveButton();
    }

    auto *all = new QVBoxLayout(this);
    all->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
    all->setSpacing(kTextToButtons);
    all->setSizeConstraint(QLayout::SetFixedSize);
    all->addLayout(top);
    all->addLayout(buttons);
}

QPushButton *AlertSheet::makeAlertButton(const QString &title, bool primary) {
    QPushButton *button = makeButton(title, primary);
    button->setFont(systemFont(kAnswerFont));
    button->setMinimumWidth(std::max(kAnswerWidth, button->sizeHint().width()));
    if (primary)
        button->setFocus();
    return button;
}

void AlertSheet::setVisible(bool visible) {
    // As Qt does for its own dialogs that the system shows: it then holds up the window unseen.
    setAttribute(Qt::WA_DontShowOnScreen, systemAlerts != nullptr);
    Sheet::setVisible(visible);
    systemAlert_.reset();
    // Later, since the system may come back with the answer only, and exec() waits for that.
    if (visible && systemAlerts)
        QMetaObject::invokeMethod(this, &AlertSheet::showSystemAlert, Qt::QueuedConnection);
}

void AlertSheet::showSystemAlert() {
    if (!isVisible() || !systemAlerts || systemAlert_)
        return;
    const QWidget *const parent = parentWidget();
    systemAlert_ =
        systemAlerts->show({.message = content_.title,
                            .text = content_.text,
                            .acceptTitle = content_.acceptTitle,
                            .rejectTitle = content_.rejectTitle,
                            .isWarning = content_.isWarning,
                            .isDestructive = content_.isDestructive},
                           parent && parent->window()->isVisible() ? parent->window()->winId() : 0,
                           [self = QPointer(this)](bool accepts) {
                               if (self)
                                   self->done(accepts ? Accepted : Rejected);
                           });
}

void AlertSheet::changeEvent(QEvent *event) {
    Sheet::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        colorDestructiveButton();
}

void AlertSheet::colorDestructiveButton() {
    if (!destructiveButton_)
        return;
    QPalette red = destructiveButton_->palette();
    red.setColor(QPalette::ButtonText, colors::systemRed());
    // While it is the button for Return.
    red.setColor(QPalette::Highlight, colors::systemRed());
    red.setColor(QPalette::HighlightedText, colors::window());
    destructiveButton_->setPalette(red);
}

}  // namespace kestrelbay
