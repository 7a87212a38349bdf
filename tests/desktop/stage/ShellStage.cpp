#include "desktop/stage/ShellStage.h"

#include <QDir>
#include <QJsonDocument>

#include "desktop/display/Picture.h"
#include "support/ChildProcess.h"

namespace kestrelbay::desktop {

using testing::ChildProcess;

ShellStage::ShellStage(StageOptions options)
    : Stage(std::move(options)),
      pointer_(desktop().displayName()),
      toasts_(desktop().displayName()),
      notifiers_(busAddress()) {}

QString ShellStage::busAddress() {
    return desktop().environment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"));
}

QString ShellStage::windowManagerName() {
    return view().title(view().managerWindow());
}

void ShellStage::keepText(const QString &name, const QString &text) const {
    if (!options().artifacts.isEmpty())
        HomeFolder::write(QDir(options().artifacts).filePath(name + QStringLiteral(".txt")),
                          text.toUtf8());
}

bool ShellStage::isFrontProgramInFront() {
    return view().isInFront(front().id()) && view().hasFocus(front().id());
}

void ShellStage::restartProgram(const QJsonObject &settings, Keys keys) {
    endProgram();
    if (keys == Keys::AreFree)
        prepare(
            QStringLiteral("free keys"), [] {}, [&] { return !hasKeys(); });
    QJsonObject all = settings;
    if (!all.contains(QStringLiteral("onboardingCompleted")))
        all.insert(QStringLiteral("onboardingCompleted"), true);
    HomeFolder::write(desktop().home().settingsPath(), QJsonDocument(all).toJson());
    HomeFolder::write(desktop().home().rulesPath(), rulesBytes());
    prepare(
        QStringLiteral("KestrelBay started"), [&] { startProgram(); },
        [&] {
            if (keys == Keys::AreTaken)
                return program().line({QStringLiteral("No hotkeys")}).has_value();
            return hasKeys() && grabbedCount() == ruleCount();
        });
}

bool ShellStage::hasKeys() {
    return view().client().ownerOf("_KESTRELBAY_EVENT_TAP") != XCB_NONE;
}

void ShellStage::askFor(const QString &action) {
    const Ending ending = startAgain({QStringLiteral("--action=") + action});
    if (ending.code != 0)
        throw NotPrepared(QStringLiteral("--action=%1 ended with %2: %3")
                              .arg(action)
                              .arg(ending.code)
                              .arg(ending.output));
}

QJsonValue ShellStage::setting(const QString &key) {
    const QByteArray text = HomeFolder::read(desktop().home().settingsPath());
    const QJsonObject all = QJsonDocument::fromJson(text).object();
    return all.contains(key) ? all.value(key) : QJsonValue(QJsonValue::Undefined);
}

std::optional<Stage::Window> ShellStage::programWindow(const QSize &size) {
    const pid_t process = program().processId();
    for (const Window window : view().stacking()) {
        if (view().processId(window) == process && view().isShown(window) &&
            view().client().area(window).size() == size)
            return window;
    }
    return std::nullopt;
}

std::optional<Stage::Window> ShellStage::windowTitled(const QString &title) {
    const pid_t process = program().processId();
    for (const Window window : view().stacking()) {
        if (view().processId(window) == process && view().isShown(window) &&
            view().title(window) == title)
            return window;
    }
    return std::nullopt;
}

Stage::Window ShellStage::waitForWindow(const QString &title) {
    std::optional<Window> window;
    prepare(
        QStringLiteral("“%1” in front").arg(title), [] {},
        [&] {
            window = windowTitled(title);
            return window && view().isInFront(*window) && view().hasFocus(*window);
        });
    return *window;
}

void ShellStage::waitForContents(Window window, const QRect &part) {
    const QRect area = part.translated(view().client().area(window).topLeft());
    prepare(
        QStringLiteral("something in a window"), [] {},
        [&] {
            // Before a window is painted it shows what was there before.
            const auto picture = settledPictureOf(view().client(), area);
            if (!picture)
                return false;
            const int edge = area.width() - 1;
            const QRect contents = contentsOf(*picture, picture->pixelColor(edge, 0));
            return !contents.isEmpty() && contents.right() < edge;
        });
}

bool ShellStage::isInFront(const QSize &size) {
    const auto window = programWindow(size);
    return window && view().isInFront(*window) && view().hasFocus(*window);
}

QPoint ShellStage::offMiddle(const QSize &size) {
    const auto window = programWindow(size);
    if (!window)
        throw NotPrepared(QStringLiteral("there is no such window"));
    XClient &client = view().client();
    QRect frame = client.area(*window);
    if (const auto extents = client.numbers(*window, "_NET_FRAME_EXTENTS"); extents.size() == 4)
        frame.adjust(-int(extents[0]), -int(extents[2]), int(extents[1]), int(extents[3]));
    return frame.center() - client.area(client.root()).center();
}

QString ShellStage::windowsInWords() {
    QStringList sizes;
    for (const Window window : view().stacking()) {
        const QSize size = view().client().area(window).size();
        if (view().processId(window) == program().processId() && view().isShown(window))
            sizes += QStringLiteral("%1×%2").arg(size.width()).arg(size.height());
    }
    return sizes.isEmpty() ? QStringLiteral("no window") : sizes.join(QStringLiteral(", "));
}

std::optional<QRect> ShellStage::openMenu() {
    XClient &client = view().client();
    for (const Window popup : client.popups()) {
        const QRect area = client.area(popup);
        if (!area.isEmpty() && !toasts_.isToast(area.size()))
            return area;
    }
    return std::nullopt;
}

QRect ShellStage::waitForMenu(const std::function<void()> &act) {
    prepare(QStringLiteral("a menu"), act, [&] { return openMenu().has_value(); });
    const QRect area = openMenu().value_or(QRect());
    (void)settledPictureOf(view().client(), area);
    return area;
}

void ShellStage::closeMenu() {
    constexpr std::uint8_t kEscape = testing::xkey::kEscape;
    prepare(
        QStringLiteral("no menu"), [&] { pressKey(kEscape); }, [&] { return !openMenu(); });
}

void ShellStage::closeWindow(const QSize &size) {
    prepare(
        QStringLiteral("the window closed"),
        [&] {
            if (const auto window = programWindow(size))
                view().close(*window);
        },
        [&] { return !programWindow(size); });
}

void ShellStage::clickIn(Window window, const QPoint &place) {
    pointer_.click(view().client().area(window).topLeft() + place);
}

}  // namespace kestrelbay::desktop
