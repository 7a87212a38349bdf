#include "platform/linux/applications/matching/ApplicationMatch.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include <QDir>

#include "files/StandardPath.h"
#include "platform/linux/applications/matching/Terminals.h"

namespace kestrelbay {

namespace {

using Matches = std::vector<ApplicationMatch>;

class Matcher {
public:
    Matcher(const WindowFacts &facts, const ApplicationIndex &index)
        : facts_(facts), index_(index) {}

    [[nodiscard]] Matches best() const {
        for (const auto step : {&Matcher::byCommand, &Matcher::byDeclaredId, &Matcher::bySandbox,
                                &Matcher::byScope, &Matcher::byLaunch, &Matcher::byStartupClass,
                                &Matcher::byClassAsId, &Matcher::byProgram, &Matcher::byCaller}) {
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

    using Try = std::pair<ApplicationIndex::Found, MatchReason>;
    /// What the first look-up gives that finds anything.
    static Matches first(std::initializer_list<Try> tries) {
        for (const auto &[found, reason] : tries)
            if (!found.empty())
                return matches(found, reason);
        return {};
    }

    /// The entry with this file, and the others of its id: two copies of one
    /// application can't be told apart by what it runs.
    [[nodiscard]] Matches byFile(const QString &path, MatchReason reason) const {
        const QString clean = standardPath(path);
        const ApplicationIndex::Found exact = index_.withPath(clean);
        const QString id =
            exact.empty() ? clean.section(u'/', -1) : index_.entries()[exact.front()].id;
        Matches result = matches(index_.withId(id), reason);
        for (const std::size_t entry : exact)
            if (std::ranges::find(result, entry, &ApplicationMatch::entry) == result.end())
                result.push_back({entry, reason});
        return result;
    }

    /// Of a terminal's window it counts what runs in it, whatever the terminal says of itself.
    [[nodiscard]] Matches byCommand() const {
        const ProcessFacts &process = facts_.process;
        QString path = entryOfTerminalRole(facts_.role);
        if (path.isEmpty() && !process.isSharedTerminal)
            path = process.launchedEntryPath;
        Matches found = path.isEmpty() ? Matches() : byFile(path, MatchReason::CommandInTerminal);
        std::erase_if(found, [this](const ApplicationMatch &match) {
            return !index_.entries()[match.entry].runsInTerminal;
        });
        return found;
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
        Matches flatpak = first({{index_.withFlatpakId(process.flatpakId), MatchReason::Flatpak},
                                 {index_.withId(process.flatpakId), MatchReason::Flatpak}});
        if (!flatpak.empty())
            return flatpak;
        const ApplicationIndex::Found snap = index_.withSnapName(process.snapName);
        if (snap.empty())
            return {};
        // One snap may bring several applications: its windows' names decide.
        Matches all = matches(snap, MatchReason::Snap);
        Matches narrowed;
        for (const Matches &named : {byStartupClass(), byClassAsId()})
            for (const ApplicationMatch &match : named)
                if (std::ranges::find(snap, match.entry) != snap.end())
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
                                &Matcher::byProgram}) {
            const Matches named = (this->*step)();
            if (named.empty())
                continue;
            return std::ranges::find_first_of(named, scope, {}, &ApplicationMatch::entry,
                                              &ApplicationMatch::entry) == named.end();
        }
        return false;
    }

    [[nodiscard]] Matches byLaunch() const {
        const QString &path = facts_.process.launchedEntryPath;
        Matches found = path.isEmpty() ? Matches() : byFile(path, MatchReason::LaunchedEntry);
        // A terminal that was started for a command goes on for all others.
        std::erase_if(found, [this](const ApplicationMatch &match) {
            return index_.entries()[match.entry].runsInTerminal;
        });
        return found;
    }

    [[nodiscard]] Matches byStartupClass() const {
        return first(
            {{index_.withStartupWmClass(facts_.instance), MatchReason::StartupWmClassInstance},
             {index_.withStartupWmClass(facts_.className), MatchReason::StartupWmClassClass}});
    }

    [[nodiscard]] Matches byClassAsId() const {
        QStringList spellings;
        for (const QString &name : {facts_.instance, facts_.className})
            spellings << name << QString(name).replace(u' ', u'-');
        for (const QString &name : std::as_const(spellings))
            if (const auto found = index_.withId(name); !found.empty())
                return matches(found, MatchReason::ClassIsId);
        for (const QString &name : std::as_const(spellings))
            if (const auto found = index_.withLastPartOfId(name); !found.empty())
                return matches(found, MatchReason::ClassIsLastPartOfId);
        return {};
    }

    [[nodiscard]] Matches byProgram() const {
        const ProcessFacts &process = facts_.process;
        Matches found = first(
            {{index_.withProgram(process.executablePath), MatchReason::Executable},
             {index_.withProgram(process.interpretedProgram), MatchReason::InterpretedProgram},
             {index_.withProgram(process.appImagePath), MatchReason::AppImage}});
        for (const QString &name : process.executableNames)
            if (found.empty())
                found = matches(index_.withExecutableName(name), MatchReason::ExecutableName);
        return found;
    }

    [[nodiscard]] Matches byCaller() const {
        for (const QString &script : facts_.process.callingScripts)
            if (const auto found = index_.withProgram(script); !found.empty())
                return matches(found, MatchReason::CallingScript);
        const QString &launched = facts_.process.sessionsEntryPath;
        return launched.isEmpty() ? Matches() : byFile(launched, MatchReason::LaunchedSession);
    }

    const WindowFacts &facts_;
    const ApplicationIndex &index_;
};

}  // namespace

QLatin1String description(MatchReason reason) {
    switch (reason) {
        case MatchReason::CommandInTerminal:
            return QLatin1String("the command in its terminal");
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
        case MatchReason::Executable:
            return QLatin1String("the file its process runs");
        case MatchReason::InterpretedProgram:
            return QLatin1String("what its process interprets");
        case MatchReason::AppImage:
            return QLatin1String("the AppImage its process is in");
        case MatchReason::ExecutableName:
            return QLatin1String("the name of its process");
        case MatchReason::CallingScript:
            return QLatin1String("the script that started its process");
        case MatchReason::LaunchedSession:
            return QLatin1String("the launch that its process came from");
    }
    return QLatin1String("nothing");
}

std::vector<ApplicationMatch> matchWindow(const WindowFacts &facts, const ApplicationIndex &index) {
    return Matcher(facts, index).best();
}

}  // namespace kestrelbay
