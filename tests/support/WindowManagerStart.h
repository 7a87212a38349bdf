#pragma once

#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace kestrelbay::testing {

/// The window managers that tests know how to start, by their programs' names.
[[nodiscard]] const QStringList &knownWindowManagers();

/// Whether a window manager leaves the Super keys to others, or has the settings that it comes
/// with, none else included.
enum class WindowManagerKeys { Free, AsInstalled };

/// How a window manager is started for a test: as users have it after installing it, with at
/// least two workspaces where it has a fixed number of them, but without first steps, panels
/// and effects, and with one hotkey on Super where the others are free. Nothing of the user's
/// is read or written.
struct WindowManagerStart {
    QStringList arguments;
    /// For one that takes over from another; empty where it cannot.
    QStringList takeover;
    QProcessEnvironment environment;
    /// What it needs on its session bus; empty where it needs none.
    QString service;
};

/// Writes what it needs below the folder, its home. Throws std::runtime_error when it cannot be
/// written, or nothing is known of that program.
[[nodiscard]] WindowManagerStart windowManagerStart(
    const QString &program, const QString &folder,
    WindowManagerKeys keys = WindowManagerKeys::Free);

}  // namespace kestrelbay::testing
