#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "fakes/FakeSystemLog.h"
#include "fakes/FakeWorkspace.h"
#include "fixtures/QtPrinters.h"
#include "launcher/AppLauncher.h"
#include "model/ShortcutRule.h"

namespace kestrelbay {

/// A launcher and a workspace in which at most Notes and the Finder run.
class LauncherFixture : public ::testing::Test {
protected:
    static constexpr auto kNotesPath = u"/Applications/Notes.app";
    static constexpr auto kFinderPath = u"/System/Finder.app";

    std::shared_ptr<FakeProcess> runNotes(const QStringList &windows, bool isActive = false) {
        return run(QStringLiteral("Notes"), kNotesPath, QStringLiteral("com.example.notes"),
                   windows, isActive);
    }
    std::shared_ptr<FakeProcess> runFinder(const QStringList &windows, bool isActive = false) {
        return run(QStringLiteral("Finder"), kFinderPath, QStringLiteral("com.apple.finder"),
                   windows, isActive);
    }

    static ShortcutRule rule(const char16_t *path, RepeatAction action = RepeatAction::KeepOpen,
                             ArgumentKind kind = ArgumentKind::None, const QString &text = {}) {
        return {.appPath = QString::fromUtf16(path),
                .repeatAction = action,
                .launchArguments = text,
                .argumentKind = kind};
    }
    static ShortcutRule notes(RepeatAction action = RepeatAction::KeepOpen,
                              ArgumentKind kind = ArgumentKind::None, const QString &text = {}) {
        return rule(kNotesPath, action, kind, text);
    }
    static ShortcutRule finder(RepeatAction action = RepeatAction::KeepOpen,
                               ArgumentKind kind = ArgumentKind::None, const QString &text = {}) {
        return rule(kFinderPath, action, kind, text);
    }

    /// What carrying the rule out asks of the system.
    QStringList requestsOf(const ShortcutRule &rule) {
        workspace_.requests().take();
        workspace_.reads().take();
        launcher_.handle(rule);
        return workspace_.requests().take();
    }
    /// How often the last rule asked that question.
    qsizetype asked(const QString &question) { return workspace_.reads().count(question); }

    FakeWorkspace workspace_;
    FakeSystemLog log_;
    AppLauncher launcher_{workspace_, log_};

private:
    std::shared_ptr<FakeProcess> run(const QString &name, const char16_t *path,
                                     const QString &identifier, const QStringList &windows,
                                     bool isActive) {
        auto process = workspace_.run(name, QString::fromUtf16(path));
        process->bundleIdentifier = identifier;
        process->isActive = isActive;
        for (const QString &window : windows)
            process->addWindow(window);
        return process;
    }
};

}  // namespace kestrelbay
