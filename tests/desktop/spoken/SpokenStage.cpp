#include "desktop/spoken/SpokenStage.h"

#include <algorithm>

#include "support/Poll.h"

namespace kestrelbay::desktop {

namespace {}  // namespace

SpokenStage::SpokenStage(StageOptions options)
    : PreferencesStage(std::move(options)), reader_(busAddress()) {}

void SpokenStage::beginAt(std::vector<RuleSpec> rules, const QJsonObject &settings) {
    useRules(std::move(rules));
    pointer().moveTo({1, 1});
    restartProgram(settings);
    askFor(QStringLiteral("preferences"));
    (void)waitForWindow(kPreferencesName);
    prepare(
        QStringLiteral("the preferences spoken"), [] {},
        [&] { return spoken(kPreferencesName).has_value(); });
}

std::optional<SpokenStage::Thing> SpokenStage::spoken(const QString &window) {
    for (Thing &thing : reader_.windowsOf(program().processId())) {
        if (thing.name == window)
            return std::move(thing);
    }
    return std::nullopt;
}

QStringList SpokenStage::told(const QString &window) {
    const auto thing = spoken(window);
    return thing ? thing->allTold() : QStringList();
}

QString SpokenStage::focused(const QString &window) {
    const auto thing = spoken(window);
    const Thing *const focused = thing ? thing->focused() : nullptr;
    return focused ? focused->told() : QString();
}

void SpokenStage::hears(const QString &done, const QString &window, const QStringList &expected,
                        const std::function<void()> &act) {
    // The last there was: a toast goes while it is waited for.
    QStringList heard;
    story().step({
        .done = done,
        .expected = expected.join(QStringLiteral(" | ")),
        .act = act,
        .seen =
            [&] {
                if (const auto thing = spoken(window))
                    heard = thing->allTold();
                return heard == expected;
            },
        .saw = [&] { return heard.join(QStringLiteral(" | ")); },
    });
}

void SpokenStage::hearsFocus(const QString &done, const QString &window, const QString &expected,
                             const std::function<void()> &act) {
    story().step({
        .done = done,
        .expected = expected,
        .act = act,
        .seen = [&] { return focused(window) == expected; },
        .saw = [&] { return focused(window); },
    });
}

SpokenStage::Thing SpokenStage::tabOn(const QString &window) {
    const auto placeNow = [&] {
        const auto thing = spoken(window);
        const Thing *const focused = thing ? thing->focused() : nullptr;
        return focused ? std::optional(*focused) : std::nullopt;
    };
    const auto before = placeNow();
    std::optional<Thing> now;
    prepare(
        QStringLiteral("another place after Tab than ") + (before ? before->told() : QString()),
        [&] { pressKey(shellkeys::kTab); },
        [&] {
            now = placeNow();
            return now && (!before || now->place != before->place);
        });
    return *now;
}

void SpokenStage::tabTo(const QString &window, const QString &part) {
    for (int i = 0; i < kMostTabs; ++i) {
        if (focused(window).contains(part))
            return;
        (void)tabOn(window);
    }
    throw NotPrepared(QStringLiteral("Tab does not come to ") + part);
}

}  // namespace kestrelbay::desktop
