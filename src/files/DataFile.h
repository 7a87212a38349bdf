#pragma once

#include <cstdint>
#include <utility>

#include <QByteArray>
#include <QString>

namespace kestrelbay {

/// A file of the program's own data, read and replaced as a whole. Where its path
/// is a symbolic link, the link stays and the file it leads to is meant. Blocks on
/// the disk; any thread, and readers never see half a file.
class DataFile {
public:
    enum class Status : std::uint8_t {
        Missing,  ///< there is no file, which is how every user begins
        Ok,
        Unusable,  ///< there is something that cannot be read
    };
    struct Content {
        Status status = Status::Missing;
        QByteArray bytes;  ///< empty unless Ok
        QString problem;   ///< why it is Unusable, as half a sentence

        bool operator==(const Content &) const = default;

        /// Is nothing lost with it? An editor or a crash may leave an empty file.
        [[nodiscard]] bool isBlank() const {
            return status != Status::Unusable && bytes.trimmed().isEmpty();
        }
    };
    enum class OldFile : std::uint8_t {
        Replace,
        /// Kept beside the new one, with ".unreadable" (then ".unreadable.2" and so
        /// on) added to its name. For what could not be understood.
        Keep,
    };

    explicit DataFile(QString path) : path_(std::move(path)) {}

    [[nodiscard]] Content read() const;

    /// Creates the folder that the file lies in, and those above it, where there are none;
    /// for the user only, as the XDG Base Directory Specification asks. False when there still
    /// is none.
    bool makeFolder() const;

    /// Replaces the file in one step, and creates its folder if need be; it is on disk when
    /// this returns. A file that was not there is for the user only; another one keeps its
    /// mode, that of a write-protected file as well, and its owner and group where the user may
    /// give them, but no access control list. False when it could not be done, as on a full
    /// disk; then the old file is still in place, whole.
    [[nodiscard]] bool replace(const QByteArray &bytes, OldFile old) const;

private:
    QString path_;
};

}  // namespace kestrelbay
