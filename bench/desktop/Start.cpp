#include "Start.h"

#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include <QTemporaryDir>

#include "Contender.h"
#include "Samples.h"
#include "TextTable.h"
#include "desktop/session/HomeFolder.h"
#include "desktop/session/RulesFile.h"

namespace kestrelbay::bench {

namespace {

using desktop::HomeFolder;
using desktop::Processes;

constexpr int kStarts = 20;

/// The bits of rules: none, the left and the right key of Shift, Control, Option and Command.
constexpr std::array<std::array<std::uint64_t, 3>, 4> kSides{
    {{0, 0x20002, 0x20004}, {0, 0x40001, 0x42000}, {0, 0x80020, 0x80040}, {0, 0x100008, 0x100010}}};

/// A hotkey of its own for each rule, that of the last one on F1.
QByteArray manyRules(int count) {
    std::vector<desktop::RuleSpec> rules;
    // The letters, digits and signs of rules, without the extra key of ISO keyboards.
    constexpr std::uint16_t kKeys = 47;
    constexpr std::uint16_t kExtraKey = 10;
    for (unsigned combination = 1; std::ssize(rules) + 1 < count; ++combination) {
        std::uint64_t flags = 0;
        unsigned rest = combination;
        for (const auto &sides : kSides) {
            flags |= sides.at(rest % 3);
            rest /= 3;
        }
        for (std::uint16_t key = 0; key < kKeys && std::ssize(rules) + 1 < count; ++key) {
            if (key == kExtraKey)
                continue;
            const QString number = QString::number(rules.size());
            rules.push_back({.appName = QStringLiteral("Application ") + number,
                             .appPath = QStringLiteral("/usr/share/applications/org.example.") +
                                        number + QStringLiteral(".desktop"),
                             .key = {.ruleCode = key, .xKeycode = 0, .label = u' '},
                             .modifierFlags = flags});
        }
    }
    rules.push_back({.appName = QStringLiteral("Terminal"),
                     .appPath = QStringLiteral("/usr/share/applications/debian-xterm.desktop"),
                     .key = kF1});
    return desktop::rulesJson(rules);
}

/// A program, its home folder and what the median of its starts and its memory may be.
struct Entrant {
    Contender contender;
    double goalMilliseconds = 0;
    int goalKiB = 0;
    Samples times{};
};

class Homes {
public:
    explicit Homes(const desktop::Desktop &desktop) : desktop_(desktop) {}

    /// The environment of the session with a home folder that has only these files below it.
    QProcessEnvironment with(const std::vector<std::pair<QString, QByteArray>> &files) {
        const QString home = folder_.filePath(QString::number(count_++));
        for (const auto &[path, contents] : files)
            HomeFolder::write(home + u'/' + path, contents);
        QProcessEnvironment environment = desktop_.environment();
        environment.insert(QStringLiteral("HOME"), home);
        for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
            environment.remove(QLatin1StringView(name));
        return environment;
    }

private:
    const desktop::Desktop &desktop_;
    QTemporaryDir folder_;
    int count_ = 0;
};

}  // namespace

void measureStart(desktop::Desktop &desktop, const QString &kestrelbay) {
    Homes homes(desktop);
    const QString rules = QStringLiteral(".config/KestrelBay/rules.json");
    const QString settings = QStringLiteral(".config/KestrelBay/settings.json");
    const QByteArray guideIsDone = R"({"onboardingCompleted":true})";
    const auto own = [&](const char *name,
                         const std::vector<std::pair<QString, QByteArray>> &files) {
        return Contender(QLatin1StringView(name), kF1, kestrelbay, {}, homes.with(files));
    };
    std::vector<Entrant> entrants;
    entrants.push_back(
        {own("KestrelBay, 10 rules", {{rules, manyRules(10)}, {settings, guideIsDone}}), 17, 8192});
    entrants.push_back(
        {own("KestrelBay, 1,000 rules", {{rules, manyRules(1'000)}, {settings, guideIsDone}}), 40,
         0});
    entrants.push_back({own("KestrelBay, first start", {{rules, manyRules(1)}}), 20, 0});
    entrants.push_back(
        {Contender(QStringLiteral("sxhkd"), kF2, QStringLiteral("sxhkd"), {},
                   homes.with({{QStringLiteral(".config/sxhkd/sxhkdrc"), "super + F2\n\ttrue\n"}})),
         0, 0});

    // One at a time, since all of KestrelBay's want the same hotkeys.
    for (int round = 0; round < kStarts; ++round) {
        for (Entrant &entrant : entrants) {
            entrant.times.add(entrant.contender.start(desktop));
            entrant.contender.stop(desktop);
        }
    }
    TextTable table({QStringLiteral("program"), QStringLiteral("median ms"),
                     QStringLiteral("p90 ms"), QStringLiteral("goal"),
                     QStringLiteral("private KiB"), QStringLiteral("goal")});
    const auto goal = [](double most) {
        return most > 0 ? QStringLiteral("≤ ") + QString::number(most) : QString();
    };
    for (Entrant &entrant : entrants) {
        entrant.contender.start(desktop);
        entrant.contender.settle(kBeforeRest);
        const auto memory = Processes::privateMemory(entrant.contender.processId());
        table.add({entrant.contender.name(), QString::number(entrant.times.median(), 'f', 1),
                   QString::number(entrant.times.percentile(90), 'f', 1),
                   goal(entrant.goalMilliseconds),
                   memory ? QString::number(*memory) : QStringLiteral("?"), goal(entrant.goalKiB)});
        entrant.contender.stop(desktop);
    }
    table.print(
        QStringLiteral("From exec to the hotkeys grabbed, %1 starts; memory at rest").arg(kStarts));
}

}  // namespace kestrelbay::bench
