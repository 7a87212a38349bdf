#include <gtest/gtest.h>

#include <QLatin1String>

#include "platform/linux/applications/matching/ApplicationMatch.h"

namespace kestrelbay {
namespace {

DesktopEntry entryOf(const char *id) {
    DesktopEntry entry;
    entry.id = QLatin1String(id);
    entry.path = QStringLiteral("/apps/") + entry.id;
    return entry;
}

/// One entry for each way of being recognised; "id" alone claims by its id.
class Matching : public ::testing::Test {
protected:
    Matching() {
        add("org.gtk.App.desktop");
        add("org.kde.app.desktop");
        add("org.flat.App.desktop").flatpakId = QStringLiteral("org.flat.App");
        add("snappy.desktop").snapName = QStringLiteral("snappy");
        add("scoped.desktop");
        add("launched.desktop");
        add("wmclass.desktop").startupWmClass = QStringLiteral("Wm-Class");
        add("byid.desktop");
        add("org.last.Part.desktop");
        DesktopEntry &program = add("program.desktop");
        program.program = QStringLiteral("/opt/program/bin/program");
        program.executableNames = {QStringLiteral("program")};
    }

    DesktopEntry &add(const char *id) {
        entries_.push_back(entryOf(id));
        return entries_.back();
    }

    /// "id (reason)", comma-separated.
    [[nodiscard]] QString matched() const {
        const ApplicationIndex index(entries_);
        QStringList texts;
        for (const ApplicationMatch &match : matchWindow(facts_, index))
            texts.append(index.entries()[match.entry].id.chopped(8) + QStringLiteral(" (") +
                         description(match.reason) + QStringLiteral(")"));
        return texts.join(QStringLiteral(", "));
    }

    std::vector<DesktopEntry> entries_;
    WindowFacts facts_;
};

TEST_F(Matching, ReasonsInOrderOfTrust) {
    // Every claim points to another entry; taking the most trusted away shows the next.
    facts_.gtkApplicationId = QStringLiteral("org.gtk.App");
    facts_.kdeDesktopFile = QStringLiteral("org.kde.app");
    facts_.process.flatpakId = QStringLiteral("org.flat.App");
    facts_.process.snapName = QStringLiteral("snappy");
    facts_.process.launchedEntryPath = QStringLiteral("/apps/launched.desktop");
    facts_.instance = QStringLiteral("Wm-Class");
    facts_.className = QStringLiteral("Byid");
    facts_.process.executablePath = QStringLiteral("/opt/program/bin/program");

    EXPECT_EQ(matched(), QStringLiteral("org.gtk.App (its GTK application id)"));
    facts_.gtkApplicationId = QStringLiteral("org.unknown");
    EXPECT_EQ(matched(), QStringLiteral("org.kde.app (the desktop file it declares)"));
    facts_.kdeDesktopFile.clear();
    EXPECT_EQ(matched(), QStringLiteral("org.flat.App (its Flatpak sandbox)"));
    facts_.process.flatpakId.clear();
    EXPECT_EQ(matched(), QStringLiteral("snappy (its snap)"));
    facts_.process.snapName.clear();
    EXPECT_EQ(matched(),
              QStringLiteral("launched (the desktop file its process was launched with)"));
    facts_.process.launchedEntryPath.clear();
    EXPECT_EQ(matched(), QStringLiteral("wmclass (its instance name, as StartupWMClass)"));
    std::swap(facts_.instance, facts_.className);
    EXPECT_EQ(matched(), QStringLiteral("wmclass (its class name, as StartupWMClass)"));
    facts_.className.clear();
    EXPECT_EQ(matched(), QStringLiteral("byid (its class, as desktop file id)"));
    facts_.instance = QStringLiteral("pArT");
    EXPECT_EQ(matched(),
              QStringLiteral("org.last.Part (its class, as last part of the desktop file id)"));
    facts_.instance.clear();
    EXPECT_EQ(matched(), QStringLiteral("program (the file its process runs)"));
    facts_.process.executablePath.clear();
    facts_.process.interpretedProgram = QStringLiteral("/opt/script.py");
    facts_.process.appImagePath = QStringLiteral("/home/X.AppImage");
    facts_.process.executableNames = {QStringLiteral("program")};
    facts_.process.callingScripts = {QStringLiteral("/nowhere"), QStringLiteral("/opt/run.sh")};
    facts_.process.sessionsEntryPath = QStringLiteral("/apps/launched.desktop");
    add("script.desktop").program = QStringLiteral("/opt/script.py");
    add("image.desktop").program = QStringLiteral("/home/X.AppImage");
    add("caller.desktop").program = QStringLiteral("/opt/run.sh");
    EXPECT_EQ(matched(), QStringLiteral("script (what its process interprets)"));
    facts_.process.interpretedProgram.clear();
    EXPECT_EQ(matched(), QStringLiteral("image (the AppImage its process is in)"));
    facts_.process.appImagePath.clear();
    EXPECT_EQ(matched(), QStringLiteral("program (the name of its process)"));
    facts_.process.executableNames.clear();
    EXPECT_EQ(matched(), QStringLiteral("caller (the script that started its process)"));
    facts_.process.callingScripts.clear();
    EXPECT_EQ(matched(), QStringLiteral("launched (the launch that its process came from)"));
    facts_.process.sessionsEntryPath.clear();
    EXPECT_EQ(matched(), QString());
}

TEST_F(Matching, AScopeCountsUnlessTheWindowSaysOtherwise) {
    facts_.process.scopeIds = {QStringLiteral("nothing"), QStringLiteral("scoped")};
    EXPECT_EQ(matched(), QStringLiteral("scoped (the systemd unit of its process)"));
    // Started from a shell in that application's terminal.
    facts_.instance = QStringLiteral("byid");
    EXPECT_EQ(matched(), QStringLiteral("byid (its class, as desktop file id)"));
    // Who started it says no more than the scope does.
    facts_.instance.clear();
    facts_.process.sessionsEntryPath = QStringLiteral("/apps/launched.desktop");
    EXPECT_EQ(matched(), QStringLiteral("scoped (the systemd unit of its process)"));
    facts_.instance = QStringLiteral("scoped");
    EXPECT_EQ(matched(), QStringLiteral("scoped (the systemd unit of its process)"));
}

TEST_F(Matching, OfATerminalTheCommandCounts) {
    facts_.gtkApplicationId = QStringLiteral("org.gtk.App");
    facts_.role = QStringLiteral("kestrelbay-command:/apps/launched.desktop");
    // Only programs for terminals run in them.
    EXPECT_EQ(matched(), QStringLiteral("org.gtk.App (its GTK application id)"));
    entries_[5].runsInTerminal = true;
    EXPECT_EQ(matched(), QStringLiteral("launched (the command in its terminal)"));
    facts_.role = QStringLiteral("another");
    EXPECT_EQ(matched(), QStringLiteral("org.gtk.App (its GTK application id)"));
    facts_.process.launchedEntryPath = QStringLiteral("/apps/launched.desktop");
    EXPECT_EQ(matched(), QStringLiteral("launched (the command in its terminal)"));
    // What a terminal was first started for says nothing of its later windows.
    facts_.process.isSharedTerminal = true;
    EXPECT_EQ(matched(), QStringLiteral("org.gtk.App (its GTK application id)"));
    facts_.gtkApplicationId.clear();
    EXPECT_EQ(matched(), QString());
}

TEST_F(Matching, AllEntriesOfOneIdShareAWindow) {
    DesktopEntry copy = entryOf("byid.desktop");
    copy.path = QStringLiteral("/home/byid.desktop");
    copy.named = true;
    entries_.push_back(copy);
    facts_.className = QStringLiteral("byid");
    EXPECT_EQ(matched(), QStringLiteral("byid (its class, as desktop file id), "
                                        "byid (its class, as desktop file id)"));
}

TEST_F(Matching, ACopyUnderAnotherNameIsAnotherApplication) {
    DesktopEntry copy = entryOf("mine.desktop");
    copy.executableNames = {QStringLiteral("program")};
    entries_.push_back(copy);
    facts_.process.executableNames = {QStringLiteral("program")};
    facts_.process.launchedEntryPath = QStringLiteral("/apps/mine.desktop");
    EXPECT_EQ(matched(), QStringLiteral("mine (the desktop file its process was launched with)"));
}

TEST_F(Matching, DeletedEntriesAreAbsentUnlessNamed) {
    entries_[7].hidden = true;
    facts_.className = QStringLiteral("byid");
    EXPECT_EQ(matched(), QString());
    entries_[7].named = true;
    EXPECT_EQ(matched(), QStringLiteral("byid (its class, as desktop file id)"));
}

TEST_F(Matching, ClassesMayHaveSpacesAndFilesFullPaths) {
    add("some-thing.desktop");
    facts_.className = QStringLiteral("Some Thing");
    EXPECT_EQ(matched(), QStringLiteral("some-thing (its class, as desktop file id)"));
    facts_.kdeDesktopFile = QStringLiteral("/apps/org.kde.app.desktop");
    EXPECT_EQ(matched(), QStringLiteral("org.kde.app (the desktop file it declares)"));
}

TEST_F(Matching, ASnapOfSeveralApplicationsGoesByTheWindowsName) {
    DesktopEntry &second = add("snappy_second.desktop");
    second.snapName = QStringLiteral("snappy");
    second.startupWmClass = QStringLiteral("Second");
    facts_.process.snapName = QStringLiteral("snappy");
    facts_.className = QStringLiteral("Second");
    EXPECT_EQ(matched(), QStringLiteral("snappy_second (its snap)"));
}

TEST_F(Matching, AWindowWithoutAnyClaimMatchesNothing) {
    add("");
    EXPECT_EQ(matched(), QString());
}

}  // namespace
}  // namespace kestrelbay
