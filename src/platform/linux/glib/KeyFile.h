#pragma once

#include <optional>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include "platform/linux/glib/GObjectPtr.h"

namespace kestrelbay {

/// A file of groups of keys: desktop entries, icon themes. Keys are those of a desktop entry's
/// main group unless another group is named. What is missing or broken reads as empty.
class KeyFile {
public:
    enum class Keep {
        /// What can be asked for in the language of the environment.
        Values,
        /// Comments and all languages too, so that nothing is lost when it is written.
        Everything,
    };

    /// With nothing in it.
    KeyFile() : file_(g_key_file_new()) {}
    /// No value when the text is not in this format.
    [[nodiscard]] static std::optional<KeyFile> parse(const QByteArray &text,
                                                      Keep keep = Keep::Values);
    /// No value also for what is not a file: a pipe would never end.
    [[nodiscard]] static std::optional<KeyFile> read(const QString &path);

    [[nodiscard]] bool has(const char *key, const char *group = kDesktopEntry) const;

    [[nodiscard]] QString string(const char *key, const char *group = kDesktopEntry) const;
    /// In the language of the environment.
    [[nodiscard]] QString localized(const char *key) const;
    [[nodiscard]] bool boolean(const char *key, bool otherwise = false) const;
    [[nodiscard]] int number(const char *key, const char *group) const;
    /// None where there is no such key.
    [[nodiscard]] std::optional<QStringList> list(const char *key) const;
    /// Has it the main group of a desktop entry?
    [[nodiscard]] bool isDesktopEntry() const;
    /// Is it the entry of an application, and not of a link or a folder?
    [[nodiscard]] bool isApplication() const;

    void set(const char *key, const QString &value);
    void remove(const char *key);
    [[nodiscard]] QByteArray text() const;

    /// For functions of GLib.
    [[nodiscard]] GKeyFile *get() const { return file_.get(); }

private:
    static constexpr const char *kDesktopEntry = G_KEY_FILE_DESKTOP_GROUP;

    std::unique_ptr<GKeyFile, ReleaseWith<g_key_file_unref>> file_;
};

}  // namespace kestrelbay
