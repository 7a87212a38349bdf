#include "app/about/AboutWindowController.h"

#include <utility>

#include <QCoreApplication>
#include <QIcon>
#include <QPainter>
#include <QPushButton>

#include "platform/NativeWindow.h"
#include "platform/Workspace.h"
#include "settings/Addresses.h"
#include "settings/L.h"
#include "settings/Notifications.h"
#include "ui/look/Fonts.h"
#include "ui/look/SystemColors.h"
#include "ui/widgets/TextLabel.h"
#include "ui/windows/CenteredWindow.h"
#include "ui/windows/FixedWindow.h"

namespace kestrelbay {

namespace {

/// In device-independent pixels, as all that follows.
constexpr QSize kSize{340, 200};
constexpr int kIconTop = 24;
constexpr int kIconSize = 64;
constexpr int kIconToName = 10;
constexpr int kNameToVersion = 4;
constexpr int kSeparatorToButtons = 12;
constexpr int kBottom = 16;
constexpr int kSide = 20;
constexpr int kButtonWidth = 140;

constexpr int kNameFont = 17;
constexpr int kVersionFont = 12;
constexpr int kButtonFont = 13;
/// Between a button's edge and its text.
constexpr int kButtonPadding = 6;

class ApplicationIcon final : public QWidget {
public:
    explicit ApplicationIcon(QWidget *parent) : QWidget(parent) {}

protected:
    void paintEvent(QPaintEvent * /*event*/) override {
        QPainter painter(this);
        icon_.paint(&painter, rect());
    }

private:
    QIcon icon_{QStringLiteral(":/icons/org.kestrelbay.KestrelBay.svg")};
};

class Separator final : public QWidget {
public:
    explicit Separator(QWidget *parent) : QWidget(parent) {}

protected:
    void paintEvent(QPaintEvent * /*event*/) override {
        QPainter(this).fillRect(rect(), colors::separator());
    }
};

QString versionText() {
    const QString version = QCoreApplication::applicationVersion();
    return L::aboutVersion(version.isEmpty() ? QStringLiteral("—") : version);
}

/// Over the whole width of the view, from `top`; the bottom of it.
int placeText(QWidget &view, int top, const QString &text, const QFont &font,
              colors::Function color) {
    auto *label = new TextLabel(text, font, std::move(color), &view);
    label->setAlignment(Qt::AlignCenter);
    label->setGeometry(0, top, kSize.width(), label->sizeHint().height());
    return label->geometry().bottom() + 1;
}

/// In which both titles fit: the width of the buttons is given, that of the user's
/// font is not.
QFont buttonFont(const QString &one, const QString &other) {
    const int width = kButtonWidth - 2 * kButtonPadding;
    return fittingFont(one, fittingFont(other, systemFont(kButtonFont), width), width);
}

QPushButton *makeButton(QWidget &view, const QString &title) {
    // An & would mark the letter that presses the button together with Alt.
    return new QPushButton(QString(title).replace(u'&', QStringLiteral("&&")), &view);
}

}  // namespace

/// What the window shows: icon, name and version, and two links.
class AboutViewController final : public QObject {
public:
    /// Fills the view and belongs to it.
    AboutViewController(QWidget &view, AboutWindowController::Services services);

    /// Opens the page from which updates are downloaded.
    void checkForUpdates() const { open(services_.addresses.downloadPage); }
    /// Opens a message to the author.
    void contactFeedback() const { open(services_.addresses.supportMail); }

private:
    void open(const QString &address) const {
        openAddress(address, services_.workspace, services_.showToast);
    }

    const AboutWindowController::Services services_;
};

AboutViewController::AboutViewController(QWidget &view, AboutWindowController::Services services)
    : QObject(&view), services_(std::move(services)) {
    auto *icon = new ApplicationIcon(&view);
    icon->setGeometry((kSize.width() - kIconSize) / 2, kIconTop, kIconSize, kIconSize);
    const int nameBottom = placeText(view, kIconTop + kIconSize + kIconToName, L::programName(),
                                     systemFont(kNameFont, QFont::DemiBold), colors::label);
    placeText(view, nameBottom + kNameToVersion, versionText(), systemFont(kVersionFont),
              colors::secondaryLabel);

    auto *updates = makeButton(view, L::checkForUpdates());
    auto *contact = makeButton(view, L::contactFeedback());
    connect(updates, &QPushButton::clicked, this, &AboutViewController::checkForUpdates);
    connect(contact, &QPushButton::clicked, this, &AboutViewController::contactFeedback);
    // That of the given size, however small the titles have to be to fit.
    updates->setFont(systemFont(kButtonFont));
    const int height = updates->sizeHint().height();
    const QFont font = buttonFont(L::checkForUpdates(), L::contactFeedback());
    updates->setFont(font);
    contact->setFont(font);

    const int top = kSize.height() - kBottom - height;
    updates->setGeometry(kSide, top, kButtonWidth, height);
    contact->setGeometry(kSize.width() - kSide - kButtonWidth, top, kButtonWidth, height);

    auto *separator = new Separator(&view);
    separator->setGeometry(0, top - kSeparatorToButtons - 1, kSize.width(), 1);

    // On no button, so that a key that is still pressed does not open anything.
    view.setFocus();
}

AboutWindowController::AboutWindowController(Services services) : services_(std::move(services)) {
    connect(&services_.notifications, &Notifications::languageDidChange, this, [this] {
        if (window_)
            build();
    });
}

AboutWindowController::~AboutWindowController() = default;

void AboutWindowController::build() {
    QWidget *const content = window_->content();
    qDeleteAll(QObjectList(content->children()));
    window_->setWindowTitle(L::aboutKestrelBay());
    new AboutViewController(*content, services_);
    // What comes into a window in view is hidden otherwise.
    for (auto *child : content->findChildren<QWidget *>())
        child->show();
}

void AboutWindowController::show() {
    if (!window_) {
        window_ = std::make_unique<FixedWindow>(kSize, QString());
        build();
    }
    centerOnActiveScreen(*window_, services_.nativeWindow);
    window_->show();
    window_->raise();
    services_.nativeWindow.bringProgramForward(window_->winId());
}

QWidget *AboutWindowController::window() const {
    return window_.get();
}

}  // namespace kestrelbay
