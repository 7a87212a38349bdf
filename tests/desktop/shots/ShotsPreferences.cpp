#include "desktop/shots/Shots.h"

#include <algorithm>
#include <array>
#include <chrono>

#include "desktop/display/HotkeyHolder.h"
#include "desktop/display/Picture.h"
#include "desktop/display/TapHolder.h"
#include "desktop/preferences/PreferencesPlaces.h"

namespace kestrelbay::desktop {

namespace {

using places::RowPart;
using places::Setting;
using Window = Stage::Window;
using testing::xkey::kEscape;

constexpr QSize kSmallest{616, 483};
/// What does not fit beside the sign.
constexpr int kWordsBeyondWindow = 240;

RuleSpec rule(const char *name, const char *entry, const Key &key,
              std::uint64_t modifiers = flags::kLeftCommand) {
    return {
        .appName = QLatin1String(name),
        .appPath = QStringLiteral("/usr/share/applications/%1.desktop").arg(QLatin1String(entry)),
        .key = key,
        .modifierFlags = modifiers};
}

std::vector<RuleSpec> fewRules() {
    RuleSpec notes = rule("Notes", "org.xfce.mousepad", keys::kD);
    notes.argumentKind = QStringLiteral("filePath");
    notes.launchArguments = QStringLiteral("~/notes/today.md");
    RuleSpec off = rule("Editor", "vim", keys::kE, flags::kCommand);
    off.isEnabled = false;
    return {rule("Terminal", "debian-xterm", keys::kT), rule("Files", "thunar", keys::kF), notes,
            off};
}

std::vector<RuleSpec> longRules() {
    RuleSpec longName = rule("A program with a name that is a good deal longer than any row is",
                             "thunar", keys::kF, flags::kAllModifiers);
    longName.argumentKind = QStringLiteral("launchArgs");
    longName.launchArguments = QStringLiteral("--profile=\"a long one\" --new-window");
    RuleSpec longPath = rule("Gone", "thunar", keys::kG);
    longPath.appPath = QStringLiteral(
        "/opt/a-vendor-with-a-long-name/a-product-with-a-longer-one/share/applications/"
        "org.example.product.desktop");
    RuleSpec nothing{.modifierFlags = 0};
    RuleSpec refused = rule("Taken", "org.xfce.mousepad", keys::kH);
    return {longName, longPath, nothing, refused};
}

Window preferences(ShotStage &stage) {
    const auto window = stage.programWindow(stage.scaled(places::kPreferences));
    if (!window)
        throw NotPrepared(QStringLiteral("the preferences are not there"));
    return *window;
}

QPoint onScreen(ShotStage &stage, const QPoint &place) {
    return stage.view().client().area(preferences(stage)).topLeft() + stage.scaled(place);
}

QColor colorAtPlace(ShotStage &stage, const QPoint &place) {
    return colorAt(stage.view().client(), onScreen(stage, place));
}

void click(ShotStage &stage, const QPoint &place) {
    stage.pointer().click(onScreen(stage, place));
}

void click(ShotStage &stage, int row, RowPart part) {
    click(stage, places::inRow(row, part));
}

void open(ShotStage &stage) {
    stage.askFor(QStringLiteral("preferences"));
    stage.prepare(
        QStringLiteral("the preferences"), [] {},
        [&] { return stage.isInFront(stage.scaled(places::kPreferences)); });
    (void)settledPictureOf(stage.view().client(), stage.withFrame(preferences(stage)));
}

void shootPreferences(ShotStage &stage, const char *name) {
    stage.shootWindow(QStringLiteral("preferences-") + QLatin1String(name), places::kPreferences);
}

/// The sheet over the preferences that is opened by a click, when something is painted in this
/// part of it.
void shootSheet(ShotStage &stage, const char *name, const QPoint &place,
                const QRect &contents = {}) {
    const Window below = preferences(stage);
    Window sheet = XCB_NONE;
    stage.prepare(
        QLatin1String(name), [&] { click(stage, place); },
        [&] {
            sheet = stage.view().active();
            return sheet != below && stage.view().hasFocus(sheet) &&
                   stage.view().processId(sheet) == stage.program().processId();
        });
    if (!contents.isEmpty())
        stage.waitForContents(sheet,
                              {stage.scaled(contents.topLeft()), stage.scaled(contents.size())});
    stage.pointer().moveTo({1, 1});
    stage.shoot(QLatin1String(name), stage.withFrame(below).united(stage.withFrame(sheet)));
}

void closeSheet(ShotStage &stage) {
    stage.pressKey(kEscape);
    stage.prepare(
        QStringLiteral("no sheet"), [] {},
        [&] { return stage.isInFront(stage.scaled(places::kPreferences)); });
}

/// In the second row.
void startRecording(ShotStage &stage) {
    XClient &client = stage.view().client();
    stage.prepare(
        QStringLiteral("recording"), [&] { click(stage, 1, RowPart::Recorder); },
        [&] { return client.keyboardIsTaken(); });
    (void)settledPictureOf(client, stage.withFrame(preferences(stage)));
}

void shootList(ShotStage &stage) {
    stage.beginWith({});
    open(stage);
    shootPreferences(stage, "no-rules");
    stage.beginWith(fewRules());
    open(stage);
    shootPreferences(stage, "rules");
    click(stage, 0, RowPart::Name);
    stage.pointer().moveTo({1, 1});
    shootPreferences(stage, "rule-clicked");
    stage.pressKey(shellkeys::kDown);
    shootPreferences(stage, "rule-by-key");
    startRecording(stage);
    stage.hold({QString(), {testing::xkey::kLeftSuper, testing::xkey::kLeftShift}});
    stage.pointer().moveTo({1, 1});
    shootPreferences(stage, "recording");
    stage.letGo({QString(), {testing::xkey::kLeftSuper, testing::xkey::kLeftShift}});
    stage.pressKey(kEscape);
    stage.begin();
    open(stage);
    shootPreferences(stage, "many-rules");
}

void shootLongTexts(ShotStage &stage) {
    const HotkeyHolder other(stage.desktop().displayName(), keys::kH.xKeycode);
    stage.beginWith(longRules());
    open(stage);
    shootPreferences(stage, "long-texts");
    const Window window = preferences(stage);
    const QSize size = stage.scaled(kSmallest);
    constexpr std::uint32_t kWidthAndHeight = 0xC00;
    stage.view().client().ask(window, "_NET_MOVERESIZE_WINDOW",
                              {kWidthAndHeight, 0, 0, static_cast<std::uint32_t>(size.width()),
                               static_cast<std::uint32_t>(size.height())});
    stage.shootWindow(QStringLiteral("preferences-smallest"), kSmallest);
    constexpr std::uint32_t kAdd = 1;
    constexpr std::uint32_t kApplication = 1;
    XClient &client = stage.view().client();
    stage.prepare(
        QStringLiteral("the largest window"),
        [&] {
            client.ask(window, "_NET_WM_STATE",
                       {kAdd, client.atom("_NET_WM_STATE_MAXIMIZED_VERT"),
                        client.atom("_NET_WM_STATE_MAXIMIZED_HORZ"), kApplication, 0});
        },
        [&] { return client.area(window).width() > 2 * size.width() / stage.look().factor(); });
    stage.shoot(QStringLiteral("preferences-maximised"), stage.withFrame(window));
}

/// A hotkey that does not arrive, since somebody holds its modifier; and who that is.
void shootUnheardHotkey(ShotStage &stage) {
    XClient holder(stage.desktop().displayName());
    xcb_grab_key(holder.get(), 0, holder.root(), 0, testing::xkey::kLeftSuper, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    holder.sync();
    stage.beginWith(fewRules());
    open(stage);
    const QPoint sign = places::inRow(0, RowPart::RefusedSign);
    const auto changesAt = [&](const QPoint &place, const char *what,
                               const std::function<void()> &act) {
        const QColor before = colorAtPlace(stage, place);
        stage.prepare(QLatin1String(what), act,
                      [&] { return colorAtPlace(stage, place) != before; });
    };
    // The middle of the sign is the stroke in it; its words come up below the pointer.
    changesAt(sign + QPoint(-4, 4), "the sign", [&] { stage.press(leftCommand(keys::kT)); });
    changesAt(sign + QPoint(12, 20), "what it means",
              [&] { stage.pointer().moveTo(onScreen(stage, sign)); });
    const int beyond = stage.scaled(QSize(kWordsBeyondWindow, 0)).width();
    stage.shoot(QStringLiteral("preferences-unheard-hotkey"),
                stage.withFrame(preferences(stage)).adjusted(0, 0, beyond, 0));
}

void shootConflict(ShotStage &stage) {
    stage.beginWith(fewRules());
    open(stage);
    XClient &client = stage.view().client();
    const QRect beside = places::besideRecorder(1);
    const QRect strip(onScreen(stage, beside.topLeft()), stage.scaled(beside.size()));
    const QImage still = pictureOf(client, strip);
    startRecording(stage);
    stage.toasts().forget();
    stage.prepare(
        QStringLiteral("a field that shakes"), [&] { stage.press(leftCommand(keys::kT)); },
        [&] {
            return pictureOf(client, strip) != still && !stage.toasts().messageToasts().empty();
        });
    stage.shootAtOnce(
        QStringLiteral("preferences-conflict"),
        stage.withFrame(preferences(stage)).united(stage.toasts().messageToasts().back().area));
}

void shootAdvancedPanels(ShotStage &stage) {
    std::vector<RuleSpec> rules;
    const auto add = [&rules](const char *kind, const char *text) {
        RuleSpec &added = rules.emplace_back(rule("Files", "thunar", keys::kF));
        added.argumentKind = QLatin1String(kind);
        added.launchArguments = QLatin1String(text);
    };
    add("none", "");
    add("launchArgs", "");
    add("urlScheme", "");
    add("filePath", "~/pictures/a/folder/that/is/far/down/in/the/tree/of/folders/of/this/user");
    rules[1].repeatAction = QStringLiteral("toggleVisibility");
    stage.beginWith(rules);
    open(stage);
    for (int row = 0; row < static_cast<int>(rules.size()); ++row) {
        const QString name =
            QStringLiteral("advanced-panel-") + rules[static_cast<std::size_t>(row)].argumentKind;
        shootSheet(stage, name.toLatin1().constData(), places::inRow(row, RowPart::Advanced));
        closeSheet(stage);
    }
}

void shootOtherSheets(ShotStage &stage) {
    stage.beginWith(fewRules());
    open(stage);
    shootSheet(stage, "app-picker", places::kAddButton, places::kPickerIcons);
    stage.type(QStringLiteral("te"));
    stage.pressKey(shellkeys::kDown);
    stage.shoot(QStringLiteral("app-picker-filtered"), stage.withFrame(stage.view().active()));
    closeSheet(stage);
    shootSheet(stage, "delete", places::inRow(0, RowPart::Delete));
    stage.pressKey(shellkeys::kTab);
    stage.shoot(QStringLiteral("delete-focused"), stage.withFrame(stage.view().active()));
    closeSheet(stage);
}

/// The menu that the right button opens there.
QRect openMenu(ShotStage &stage, const QPoint &place) {
    return stage.waitForMenu(
        [&] { stage.pointer().click(onScreen(stage, place), Pointer::Button::Right); });
}

void shootMenuAndImport(ShotStage &stage) {
    std::vector<RuleSpec> rules = fewRules();
    stage.beginWith(rules);
    open(stage);
    const Window below = preferences(stage);
    const QRect menu = openMenu(stage, places::inRow(1, RowPart::Name));
    stage.pressKey(shellkeys::kDown);
    stage.shoot(QStringLiteral("rule-menu"), stage.withFrame(below).united(menu));
    stage.closeMenu();

    rules[1].launchArguments = QStringLiteral("/srv");
    rules[1].argumentKind = QStringLiteral("filePath");
    rules[3].key = keys::kU;
    rules.push_back(longRules()[1]);
    const QString file = stage.desktop().home().path(QStringLiteral("shortcuts.json"));
    HomeFolder::write(file, rulesJson(rules));
    (void)openMenu(stage, places::inRow(7, RowPart::Name));
    stage.pressKey(shellkeys::kDown);
    stage.pressKey(shellkeys::kReturn);
    stage.prepare(
        QStringLiteral("a file dialog"), [] {},
        [&] {
            return stage.view().active() != below && stage.view().hasFocus(stage.view().active());
        });
    stage.type(file);
    stage.prepare(
        QStringLiteral("the sheet of an import"), [&] { stage.pressKey(shellkeys::kReturn); },
        [&] {
            // Nobody sees it before its button is painted.
            XClient &client = stage.view().client();
            const QRect sheet = client.area(stage.view().active());
            const QRect button(sheet.topLeft() + stage.scaled(places::kImportAdd),
                               stage.scaled(places::kImportAddTitle));
            return stage.isInFront(stage.scaled(places::kImportSheet)) &&
                   !contentsOf(pictureOf(client, button), colorAt(client, button.topLeft()))
                        .isEmpty();
        });
    stage.shoot(QStringLiteral("import"), stage.withFrame(below));
    stage.pressKey(shellkeys::kReturn);
    stage.shootToast(QStringLiteral("toast-imported"), stage.toasts().messageToasts());
    stage.prepare(
        QStringLiteral("an icon"), [] {},
        [&] {
            return colorAtPlace(stage, places::kFirstIcon + QPoint(0, 6 * places::kRowPitch)) !=
                   colorAtPlace(stage, {10, 300});
        });
    shootPreferences(stage, "imported");
}

void showAdvancedTab(ShotStage &stage) {
    const QColor before = colorAtPlace(stage, places::kAdvancedTabGround);
    stage.prepare(
        QStringLiteral("the Advanced tab"), [&] { click(stage, places::kAdvancedTab); },
        [&] { return colorAtPlace(stage, places::kAdvancedTabGround) != before; });
    stage.pointer().moveTo({1, 1});
}

/// That of the sounds, with the pointer on an entry.
void shootPopupList(ShotStage &stage) {
    XClient &client = stage.view().client();
    QRect list;
    stage.prepare(
        QStringLiteral("a popup list"), [&] { click(stage, places::controlOf(Setting::Sound)); },
        [&] {
            const auto popups = client.popups();
            list = popups.empty() ? QRect() : client.area(popups.back());
            return !list.isEmpty();
        });
    stage.pointer().moveTo(list.topLeft() + stage.scaled(QPoint(40, 110)));
    stage.shoot(QStringLiteral("preferences-popup-list"),
                stage.withFrame(preferences(stage)).united(list));
    stage.pressKey(kEscape);
    stage.prepare(
        QStringLiteral("no popup list"), [] {}, [&] { return client.popups().empty(); });
}

void shootAdvancedTab(ShotStage &stage) {
    stage.beginWith(fewRules());
    open(stage);
    showAdvancedTab(stage);
    shootPreferences(stage, "advanced");
    shootPopupList(stage);
    // A file where the folder should be, so that the entry cannot be written.
    const QString folder = stage.desktop().home().config(QStringLiteral("autostart"));
    HomeFolder::write(folder, "not a folder");
    shootSheet(stage, "login-item-failure", places::controlOf(Setting::LaunchAtLogin));
    closeSheet(stage);
}

void shootMissingKeys(ShotStage &stage) {
    const TapHolder other(stage.desktop().displayName());
    stage.beginWith(fewRules(), {}, ShellStage::Keys::AreTaken);
    open(stage);
    stage.toasts().forget();
    click(stage, 0, RowPart::Recorder);
    stage.shootToast(QStringLiteral("toast-with-button"), stage.toasts().messageToasts());
    const QRect toast = stage.toasts().messageToasts().back().area;
    // Between its control and the left edge there is nothing but ground, wherever the style has
    // the row.
    const QPoint ground = places::controlOf(Setting::Access) - QPoint(250, 12);
    constexpr std::array kRows{0, 20, 40};
    stage.pointer().click({toast.right() - 2 * toast.height() / 3, toast.center().y()});
    const auto isOrange = [&] {
        return std::ranges::any_of(kRows, [&](int below) {
            const QColor color = colorAtPlace(stage, ground + QPoint(0, below));
            return color.red() > color.blue() + 25;
        });
    };
    stage.prepare(
        QStringLiteral("a row that flashes"), [] {}, isOrange);
    stage.pointer().moveTo({1, 1});
    stage.shootAtOnce(QStringLiteral("preferences-advanced-highlighted"),
                      stage.withFrame(preferences(stage)));
    // Longer than it is dark between two flashes.
    constexpr std::chrono::milliseconds kRest{400};
    auto since = std::chrono::steady_clock::now();
    stage.prepare(
        QStringLiteral("a row at rest"), [] {},
        [&] {
            const auto now = std::chrono::steady_clock::now();
            if (isOrange())
                since = now;
            return now - since > kRest;
        });
    shootPreferences(stage, "advanced-without-keys");
}

}  // namespace

const std::vector<Shot> &preferencesShots() {
    static const std::vector<Shot> kShots{
        {"preferences: list", shootList},
        {"preferences: long texts", shootLongTexts},
        {"preferences: unheard hotkey", shootUnheardHotkey},
        {"preferences: conflict", shootConflict},
        {"preferences: advanced panels", shootAdvancedPanels},
        {"preferences: other sheets", shootOtherSheets},
        {"preferences: menu and import", shootMenuAndImport},
        {"preferences: advanced tab", shootAdvancedTab},
        {"preferences: missing keys", shootMissingKeys},
    };
    return kShots;
}

}  // namespace kestrelbay::desktop
