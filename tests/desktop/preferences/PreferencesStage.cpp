#include "desktop/preferences/PreferencesStage.h"

#include <QJsonArray>
#include <QJsonDocument>

#include "desktop/display/Picture.h"

namespace kestrelbay::desktop {

namespace {

QString inWords(const QJsonObject &rule) {
    const auto text = [&rule](const char *key) { return rule[QLatin1String(key)].toString(); };
    const auto number = [&rule](const char *key, int base) {
        return QString::number(rule[QLatin1String(key)].toInteger(), base);
    };
    QStringList words{text("appName"), number("keyCode", 10), number("modifierFlags", 16)};
    if (text("repeatAction") != u"keepOpen")
        words += text("repeatAction");
    if (text("argumentKind") != u"none")
        words += QStringLiteral("%1 “%2”").arg(text("argumentKind"), text("launchArguments"));
    if (!rule[QStringLiteral("isEnabled")].toBool())
        words += QStringLiteral("off");
    return words.join(u' ');
}

}  // namespace

void PreferencesStage::begin(std::vector<RuleSpec> rules, const QJsonObject &settings) {
    useRules(std::move(rules));
    pointer().moveTo({1, 1});
    restartProgram(settings);
    bringFrontProgram();
    openPreferences();
}

void PreferencesStage::openPreferences() {
    askFor(QStringLiteral("preferences"));
    prepare(
        QStringLiteral("the preferences"), [] {}, [&] { return isInFront(kPreferencesSize); });
    // Nobody clicks before there is something to be seen.
    settle();
}

Stage::Window PreferencesStage::preferences() {
    const auto window = programWindow(kPreferencesSize);
    if (!window)
        throw NotPrepared(QStringLiteral("the preferences are not there"));
    return *window;
}

QPoint PreferencesStage::onScreen(const QPoint &place) {
    return view().client().area(preferences()).topLeft() + place;
}

QColor PreferencesStage::colorAtPlace(const QPoint &place) {
    const QImage pixel = pictureIn(view().client(), preferences(), QRect(place, QSize(1, 1)));
    return pixel.isNull() ? QColor() : pixel.pixelColor(0, 0);
}

void PreferencesStage::showAdvancedTab() {
    const QColor before = colorAtPlace(places::kAdvancedTabGround);
    prepare(
        QStringLiteral("the Advanced tab"), [&] { click(places::kAdvancedTab); },
        [&] { return colorAtPlace(places::kAdvancedTabGround) != before; });
}

void PreferencesStage::startRecording(const QPoint &recorder) {
    prepare(
        QStringLiteral("recording"), [&] { click(recorder); }, [&] { return isRecording(); });
    // Nobody presses a key before the field says so.
    settle();
}

void PreferencesStage::settle() {
    (void)settledPictureOf(view().client(), view().client().area(preferences()));
}

QStringList PreferencesStage::rules() {
    const QJsonDocument document =
        QJsonDocument::fromJson(HomeFolder::read(desktop().home().rulesPath()));
    QStringList all;
    const QJsonArray array = document.array();
    for (const auto &rule : array)
        all += inWords(rule.toObject());
    return all;
}

void PreferencesStage::seesRules(const QString &done, const QStringList &expected,
                                 const std::function<void()> &act) {
    story().step({
        .done = done,
        .expected = QStringLiteral("on disk: ") + expected.join(QStringLiteral(" | ")),
        .act = act,
        .seen = [&] { return rules() == expected; },
        .saw = [&] { return rules().join(QStringLiteral(" | ")); },
    });
}

void PreferencesStage::sees(const QString &done, const QString &expected,
                            const std::function<void()> &act, const std::function<bool()> &seen,
                            const std::function<QString()> &objection) {
    story().step({
        .done = done,
        .expected = expected,
        .act = act,
        .seen = seen,
        .saw =
            [&] {
                return QStringLiteral("%1; %2%3")
                    .arg(windowsInWords(), frontInWords(),
                         isRecording() ? QStringLiteral("; the keyboard is held") : QString());
            },
        .objection = objection,
    });
}

void PreferencesStage::startsMarker(const QString &done, const Chord &chord) {
    bringFrontProgram();
    const int before = markers();
    sees(
        done, QStringLiteral("%1 works").arg(chord.text), [&] { press(chord); },
        [&] { return markers() == before + 1; },
        [&] {
            return front().pressesOf(chord.keycodes.back()) == 0
                       ? QString()
                       : QStringLiteral("the program in front got it too");
        });
}

void PreferencesStage::passesToFront(const QString &done, const Chord &chord) {
    bringFrontProgram();
    const int before = markers();
    const auto presses = [&] { return front().pressesOf(chord.keycodes.back()); };
    story().step({
        .done = done,
        .expected = QStringLiteral("the program in front gets %1, once").arg(chord.text),
        .act = [&] { press(chord); },
        .seen = [&] { return presses() == 1; },
        .saw =
            [&] {
                return QStringLiteral("%1 press, %2 started; %3")
                    .arg(presses())
                    .arg(markers() - before)
                    .arg(frontInWords());
            },
        .objection =
            [&] {
                return markers() == before ? QString() : QStringLiteral("it started something");
            },
    });
}

void PreferencesStage::isHeldBack(const QString &done, const Chord &chord,
                                  const Chord &markerChord) {
    bringFrontProgram();
    const int before = markers();
    story().step({
        .done = done,
        .expected = QStringLiteral("nobody gets %1, nothing starts").arg(chord.text),
        .act =
            [&] {
                press(chord);
                press(markerChord);
            },
        .seen = [&] { return markers() == before + 1; },
        .saw = [&] { return QStringLiteral("%1 started").arg(markers() - before); },
        .objection =
            [&] {
                return front().pressesOf(chord.keycodes.back()) == 0
                           ? QString()
                           : QStringLiteral("the program in front got it");
            },
    });
}

RuleSpec markerRule(const HomeFolder &home, const Key &key) {
    return {.appName = QLatin1String(scenario::kMarkerName),
            .appPath = home.applicationPath(QStringLiteral("kestrel-arguments.desktop")),
            .key = key,
            .argumentKind = QStringLiteral("launchArgs"),
            .launchArguments = QLatin1String(scenario::kMarkerArgument)};
}

RuleSpec ruleWithoutHotkey(const QString &name, const QString &entry) {
    return {.appName = name,
            .appPath = QStringLiteral("/usr/share/applications/%1.desktop").arg(entry),
            .modifierFlags = 0};
}

RuleSpec editorRule() {
    RuleSpec rule =
        ruleWithoutHotkey(QStringLiteral("Editor"), QStringLiteral("org.xfce.mousepad"));
    rule.key = keys::kE;
    rule.modifierFlags = flags::kLeftCommand;
    return rule;
}

}  // namespace kestrelbay::desktop
