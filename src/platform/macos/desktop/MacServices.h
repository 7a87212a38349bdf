#pragma once

#include "platform/HotkeyHolders.h"
#include "platform/ScreenLock.h"
#include "platform/SystemLog.h"
#include "platform/SystemSettings.h"
#include "platform/SystemSounds.h"
#include "platform/SystemSymbols.h"
#include "platform/SystemTints.h"
#include "platform/SystemTray.h"

namespace kestrelbay {

// The services that take macOS a call or none.

/// The menu bar, which is always there, tints icons by itself and opens their menus.
class MacSystemTray final : public SystemTray {
public:
    /// Calls the handler at once.
    void whenAvailable(std::function<void()> handler) override { handler(); }
    [[nodiscard]] bool isAvailable() const override { return true; }
    [[nodiscard]] std::optional<bool> isDark() const override { return std::nullopt; }
    /// There are no icon themes.
    [[nodiscard]] bool tintsIcon(const QString & /*name*/) const override { return false; }
    /// Never called: there is nothing to tell.
    void setDarkHandler(std::function<void()> /*handler*/) override {}
    void drawSymbol(const QString &name, const QString &description) override;
    [[nodiscard]] bool opensMenus() const override { return true; }
};

/// The login window's own input, which no tap sees or keeps from it.
class MacScreenLock final : public ScreenLock {
public:
    [[nodiscard]] std::unique_ptr<Watch> watch(std::function<void()> /*aboutToLock*/) override {
        return nullptr;
    }
};

/// Nobody: a tap is never refused a hotkey.
class MacHotkeyHolders final : public HotkeyHolders {
public:
    [[nodiscard]] HotkeyHolder holderOf(const RefusedHotkey & /*refused*/) override { return {}; }
};

/// Light, dark, accent and contrast are Qt's business here: it follows the system by itself.
class MacSystemSettings final : public SystemSettings {
public:
    [[nodiscard]] std::optional<ColorScheme> colorScheme() const override { return std::nullopt; }
    [[nodiscard]] std::optional<QColor> accentColor() const override { return std::nullopt; }
    [[nodiscard]] bool isContrastHigh() const override { return false; }
    /// Never called: there is nothing to tell.
    void setAppearanceHandler(std::function<void()> /*handler*/) override {}
    [[nodiscard]] bool hasAccessibilityPane() const override { return true; }
    /// Privacy & Security › Accessibility.
    bool openAccessibilityPane() override;
};

/// The sounds that the system brings, by NSSound.
class MacSystemSounds final : public SystemSounds {
public:
    [[nodiscard]] QStringList directories() const override;
    [[nodiscard]] QStringList suffixes() const override;
    void play(const QString &name) override;
};

/// SF Symbols, which have the names that ours are called by.
class MacSystemSymbols final : public SystemSymbols {
public:
    [[nodiscard]] QImage image(const QString &name, QSize size) const override;
};

/// NSColor's, which follow the user's accent and contrast; Qt has everything drawn again when
/// they change.
class MacSystemTints final : public SystemTints {
public:
    [[nodiscard]] QColor accent() const override;
    [[nodiscard]] QColor onAccent() const override;
    [[nodiscard]] QColor green() const override;
    [[nodiscard]] QColor orange() const override;
    [[nodiscard]] QColor red() const override;
    [[nodiscard]] QColor secondaryLabel() const override;
    [[nodiscard]] QColor tertiaryLabel() const override;
    [[nodiscard]] QColor separator() const override;
};

/// The unified log, under the bundle's identifier as subsystem. Warnings are written
/// as errors, so that the log keeps them longest; nothing in a line is hidden.
class UnifiedLog final : public SystemLog {
public:
    void write(const QString &line) override;
};

}  // namespace kestrelbay
