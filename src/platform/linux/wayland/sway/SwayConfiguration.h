#pragma once

#include <vector>

#include <QByteArray>
#include <QString>

namespace kestrelbay::sway {

/// A binding of the mode "default" as the user has written it.
struct WrittenBinding {
    /// By a key's number, not by what it types.
    bool isByCode = false;
    /// "Mod4+Shift+q", variables filled in.
    QByteArray keys;
    /// What it runs.
    QByteArray command;

    bool operator==(const WrittenBinding &) const = default;
};

/// What a configuration of sway says of keys. Programs are not run for it, as `include` could ask
/// for.
struct SwayConfiguration {
    std::vector<WrittenBinding> bindings;
    /// What XKB calls the keyboard; empty for what is not set. Where keyboards differ, the last
    /// one that is spoken of.
    struct Keyboard {
        QByteArray rules, model, layout, variant, options;
        /// Of a file of XKB's, which counts instead; empty where there is none.
        QByteArray keymap;

        bool operator==(const Keyboard &) const = default;
    };
    Keyboard keyboard;
    /// What `include` would have to run a program for.
    std::vector<QByteArray> unread;
};

/// Reads a configuration and the files that it includes.
///
/// `path` is the file that the text is from. Whatever the text is, the result is as much as could
/// be understood.
[[nodiscard]] SwayConfiguration readConfiguration(const QByteArray &text, const QString &path);

}  // namespace kestrelbay::sway
