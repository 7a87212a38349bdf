#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include <QFile>
#include <QTemporaryDir>

#include "fakes/FakeEventTap.h"
#include "fakes/FakeSystemLog.h"
#include "fixtures/QtPrinters.h"
#include "hotkeys/ShortcutManager.h"

namespace kestrelbay {

/// A manager with a keyboard, a log and a folder of its own.
class ManagerFixture : public ::testing::Test {
protected:
    ShortcutManager &manager() {
        if (!manager_)
            restart();
        return *manager_;
    }
    /// As if the program were started anew.
    void restart() {
        manager_.reset();
        manager_ = std::make_unique<ShortcutManager>(
            folder_.path(), tap_, log_,
            ShortcutManager::Hooks{
                .ruleFired = [this](const ShortcutRule &rule) { fired_.append(rule.appName); },
                .rulesChanged =
                    [this](const ShortcutManager::Rules &rules) {
                        ++rulesChangedCalls_;
                        lastRules_ = rules;
                    },
                .rulesTakenIn = [this] { ++rulesTakenInCalls_; },
                .refusalsChanged = [this] { ++refusalsChangedCalls_; }});
    }

    static ShortcutRule rule(const QString &name, std::uint16_t keyCode = 0,
                             std::uint64_t flags = 0) {
        return {.appName = name,
                .appPath = QStringLiteral("/Applications/") + name,
                .keyCode = KeyCode{keyCode},
                .modifierFlags = ModifierFlags(flags)};
    }

    [[nodiscard]] QString filePath() const {
        return folder_.filePath(QStringLiteral("rules.json"));
    }
    void writeFile(const QByteArray &content) const {
        QFile file(filePath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    [[nodiscard]] bool fileExists() const { return QFile::exists(filePath()); }
    /// For finding out whether it was written since.
    void removeFile() const { QFile::remove(filePath()); }

    /// The names of the rules, in order.
    QStringList names() {
        QStringList names;
        for (const ShortcutRule &rule : manager().rules())
            names.append(rule.appName);
        return names;
    }

    QTemporaryDir folder_;
    FakeEventTap tap_;
    FakeSystemLog log_;
    QStringList fired_;
    int rulesChangedCalls_ = 0;
    int rulesTakenInCalls_ = 0;
    int refusalsChangedCalls_ = 0;
    ShortcutManager::Rules lastRules_;
    std::unique_ptr<ShortcutManager> manager_;
};

}  // namespace kestrelbay
