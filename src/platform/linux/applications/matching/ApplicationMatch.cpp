#include "platform/linux/applications/matching/ApplicationMatch.h"

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <iterator>

#include <QDir>

namespace kestrelbay {

namespace {

using Matches = std::vector<ApplicationMatch>;

class Matcher {
public:
    Matcher(const WindowFacts &facts, const ApplicationIndex &index)
        : facts_(facts), index_(index) {}

    [[nodiscard]] Matches best() const {
        for (const auto step :
             {&Matcher::byDeclaredId, &Matcher::bySandbox, &Matcher::byScope, &Matcher::byLaunch,
              &Matcher::byStartupClass, &Matcher::byClassAsId, &Matcher::byExecutable}) {
            Matches found = (this->*step)();
            if (!found.empty())
                return found;
        }
        return {};
    }

private:
    static Matches matches(ApplicationIndex::Found found, MatchReason reason) {
        Matches result;
        result.reserve(found.size());
        for (const std::size_t entry : found)
            result.push_back({entry, reason});
        return result;
    }

    /// The entry with this file, and the others of its id: two copies of one
    /// application can't be told apart by what it runs.
    [[nodiscard]] Matches byFile(const QString &path, MatchReason reason) const {
        const QString clean = QDir::cleanPath(path);
        const ApplicationIndex::Found exact = index_.withPath(clean);
        const QString id =
            exact.empty() ? clean.section(u'/', -1) : index_.entries()[exact.front()].id;
        Matches result = matches(index_.withId(id), reason);
        for (const std::size_t entry : exact)
            if (std::none_of(result.begin(), result.end(),
                             [&](const ApplicationMatch &match) { return match.entry == entry; }))
                result.push_back({entry, reason});
        return result;
    }

    [[nodiscard]] Matches byDeclaredId() const {
        Matches found =
            matches(index_.withId(facts_.gtkApplicationId), MatchReason::GtkApplicationId);
        if (!found.empty() || facts_.kdeDesktopFile.isEmpty())
            return found;
        return QDir::isAbsolutePath(facts_.kdeDesktopFile)
                   ? byFile(facts_.kdeDesktopFile, MatchReason::KdeDesktopFile)
                   : matches(index_.withId(facts_.kdeDesktopFile), MatchReason::KdeDesktopFile);
    }

    [[nodiscard]] Matches bySandbox() const {
        const ProcessFacts &process = facts_.process;
        for (const auto &[found, reason] :
             {std::pair{index_.withFlatpakId(process.flatpakId), MatchReason::Flatpak},
              std::pair{index_.withId(process.flatpakId), MatchReason::Flatpak}})
            if (!found.empty())
                return matches(found, reason);
        const ApplicationIndex::Found snap = index_.withSnapName(process.snapName);
        if (snap.empty())
            return {};
        // One snap may bring several applications: its windows' names decide.
        Matches all = matches(snap, MatchReason::Snap);
        Matches narrowed;
        for (const Matches &named : {byStartupClass(), byClassAsId()})
            for (const ApplicationMatch &match : named)
                if (std::find(snap.begin(), snap.end(), match.entry) != snap.end())
                    narrowed.push_back({match.entry, MatchReason::Snap});
        return narrowed.empty() ? all : narrowed;
    }

    [[nodiscard]] Matches byScope() const {
        for (const QString &id : facts_.process.scopeIds) {
            const Matches found = matches(index_.withId(id), MatchReason::Scope);
            if (!found.empty())
                return contradictsScope(found) ? Matches() : found;
        }
        return {};
    }

    /// What is started inside a terminal stays in the terminal's scope, and so
    /// does everything started by a launcher that makes no scopes. There the
    /// window's own name is the better witness.
    [[nodiscard]] bool contradictsScope(const Matches &scope) const {
        for (const auto step : {&Matcher::byLaunch, &Matcher::byStartupClass, &Matcher::byClassAsId,
                                &Matcher::byExecutable}) {
            const Matches named = (this->*step)();
            if (named.empty())
                continue;
            return std::none_of(named.begin(), named.end(), [&](const ApplicationMatch &match) {
                return std::any_of(scope.begin(), scope.end(), [&](const ApplicationMatch &other) {
                    return other.entry == match.entry;
                });
            });
        }
        return false;
    }

    [[nodiscard]] Matches byLaunch() const {
        const QString &path = facts_.process.launchedEntryPath;
        return path.isEmpty() ? Matches() : byFile(path, MatchReason::LaunchedEntry);
    }

    [[nodiscard]] Matches byStartupClass() const {
        Matches found = matches(index_.withStartupWmClass(facts_.instance),
                                MatchReason::StartupWmClassInstance);
        return found.empty() ? matches(index_.withStartupWmClass(facts_.className),
                                       MatchReason::StartupWmClassClass)
                             : found;
    }

    [[nodiscard]] Matches byClassAsId() const {
        const auto tryBoth = [this](const auto &lookUp, MatchReason reason) {
            for (const QString &name : {facts_.instance, facts_.className}) {
                QString dashed = name;
                dashed.replace(u' ', u'-');
                for (const QString &spelling : {name, dashed}) {
                    const ApplicationIndex::Found found = lookUp(spelling);
                    if (!found.empty())
                        return matches(found, reason);
                }
            }
            return Matches();
        };
        Matches found = tryBoth([this](const QString &name) { return index_.withId(name); },
                                MatchReason::ClassIsId);
        return found.empty()
                   ? tryBoth([this](const QString &name) { return index_.withLastPartOfId(name); },
                             MatchReason::ClassIsLastPartOfId)
                   : found;
    }

    [[nodiscard]] Matches byExecutable() const {
        Matches found = matches(index_.withExecutablePath(facts_.process.executablePath),
                                MatchReason::ExecutablePath);
        if (!found.empty())
            return found;
        for (const QString &name : facts_.process.executableNames) {
            found = matches(index_.withExecutableName(name), MatchReason::ExecutableName);
            if (!found.empty())
                return found;
        }
        return {};
    }

    const WindowFacts &facts_;
    const ApplicationIndex &index_;
};

}  // namespace

QLatin1String description(MatchReason reason) {
    switch (reason) {
        case MatchReason::GtkApplicationId:
            return QLatin1String("its GTK application id");
        case MatchReason::KdeDesktopFile:
            return QLatin1String("the desktop file it declares");
        case MatchReason::Flatpak:
            return QLatin1String("its Flatpak sandbox");
        case MatchReason::Snap:
            return QLatin1String("its snap");
        case MatchReason::Scope:
            return QLatin1String("the systemd unit of its process");
        case MatchReason::LaunchedEntry:
            return QLatin1String("the desktop file its process was launched with");
        case MatchReason::StartupWmClassInstance:
            return QLatin1String("its instance name, as StartupWMClass");
        case MatchReason::StartupWmClassClass:
            return QLatin1String("its class name, as StartupWMClass");
        case MatchReason::ClassIsId:
            return QLatin1String("its class, as desktop file id");
        case MatchReason::ClassIsLastPartOfId:
            return QLatin1String("its class, as last part of the desktop file id");
        case MatchReason::ExecutablePath:
            return QLatin1String("the file its process runs");
        case MatchReason::ExecutableName:
            return QLatin1String("the name of its process");
    }
    return QLatin1String("nothing");
}

std::vector<ApplicationMatch> matchWindow(const WindowFacts &facts, const ApplicationIndex &index) {
    return Matcher(facts, index).best();
}

}  // namespace kestrelbay
