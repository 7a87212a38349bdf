#include <algorithm>
#include <cmath>

#include "desktop/display/Picture.h"
#include "desktop/spoken/SpokenScenes.h"
#include "support/bus/FakeSettingsPortal.h"

namespace kestrelbay::desktop {

namespace {

using namespace Qt::StringLiterals;
using shellkeys::kReturn;
using testing::FakeSettingsPortal;
using testing::xkey::kEscape;

/// Of the Web Content Accessibility Guidelines, for what shows where the focus is.
constexpr double kLeastContrast = 3;
/// How far outside of a control its ring may lie.
constexpr int kAround = 4;

/// As those guidelines define it.
double luminance(const QColor &color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

double contrast(const QColor &one, const QColor &other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// How many pixels differ clearly in that part.
int clearlyChanged(const QImage &before, const QImage &after, const QRect &part) {
    int changed = 0;
    const QRect both = part & before.rect() & after.rect();
    for (int y = both.top(); y <= both.bottom(); ++y) {
        for (int x = both.left(); x <= both.right(); ++x) {
            if (before.pixel(x, y) != after.pixel(x, y) &&
                contrast(before.pixelColor(x, y), after.pixelColor(x, y)) >= kLeastContrast)
                ++changed;
        }
    }
    return changed;
}

/// Goes by Tab from one of these things to the next, in that order; a step after which each has
/// shown clearly that it has the keyboard.
void showsFocus(SpokenStage &stage, const QString &name, const QString &window,
                const QStringList &parts) {
    XClient &client = stage.view().client();
    const QRect place = client.area(stage.view().active());
    QStringList problems;
    const auto goRound = [&] {
        for (const QString &part : parts) {
            const auto before = settledPictureOf(client, place);
            const SpokenStage::Thing thing = stage.tabOn(window);
            const auto after = settledPictureOf(client, place);
            const auto shown = stage.spoken(window);
            if (!thing.told().contains(part) || !before || !after || !shown) {
                problems += u"“%1” instead of %2"_s.arg(thing.told(), part);
                continue;
            }
            const QRect area = stage.reader()
                                   .area(thing.place)
                                   .translated(-stage.reader().area(shown->place).topLeft());
            const int changed = clearlyChanged(*before, *after,
                                               area.adjusted(-kAround, -kAround, kAround, kAround));
            // A line along two of its sides.
            if (changed < area.width() + area.height())
                problems += u"%1: %2 pixels"_s.arg(thing.told()).arg(changed);
        }
    };
    bool isDone = false;
    stage.story().step({
        .done = u"went round by Tab: "_s + name,
        .expected = u"each shows clearly that it has the keyboard"_s,
        .act =
            [&] {
                goRound();
                isDone = true;
            },
        .seen = [&] { return isDone && problems.isEmpty(); },
        .saw = [&] { return problems.join(u"; "_s); },
    });
    stage.screenshot(u"contrast-"_s + name);
}

void playIn(SpokenStage &stage, const QString &look) {
    stage.beginAt({markerRule(stage.desktop().home(), keys::kK), editorRule()});
    showsFocus(stage, look + u"-rules"_s, kPreferencesName,
               {u"list item: Marker"_s, u"Hotkey of Marker"_s, u"Enable Marker"_s,
                u"Advanced Options: Marker"_s, u"Delete Marker"_s, u"Add"_s, u"page tab"_s});
    stage.tabTo(kPreferencesName, u"Advanced Options: Marker"_s);
    stage.pressKey(kReturn);
    (void)stage.waitForWindow(u"Advanced · Marker"_s);
    showsFocus(stage, look + u"-options"_s, u"Advanced · Marker"_s,
               {u"of Launch Args"_s, u"Value"_s, u"Learn more"_s, u"Cancel"_s, u"Save"_s,
                u"Keep app open"_s});
    stage.pressKey(kEscape);
    (void)stage.waitForWindow(kPreferencesName);
    stage.tabTo(kPreferencesName, u"page tab"_s);
    stage.hearsFocus(u"pressed Right"_s, kPreferencesName,
                     u"page tab: Advanced (selected, focused)"_s,
                     [&] { stage.pressKey(spokenkeys::kRight); });
    showsFocus(stage, look + u"-settings"_s, kPreferencesName,
               {u"Launch at Login"_s, u"of Language"_s, u"of Sound"_s, u"of Launch Icon Toast"_s,
                u"Config File Location"_s, u"page tab"_s});
}

}  // namespace

void sceneHighContrast(SpokenStage &stage) {
    FakeSettingsPortal portal(stage.busAddress(), FakeSettingsPortal::kPreferLight);
    portal.setContrastHigh(true);
    playIn(stage, u"light"_s);
    portal.setColorScheme(FakeSettingsPortal::kPreferDark);
    playIn(stage, u"dark"_s);
    stage.endProgram();
}

}  // namespace kestrelbay::desktop
