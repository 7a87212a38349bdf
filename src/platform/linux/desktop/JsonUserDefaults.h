#pragma once

#include <chrono>
#include <memory>

#include <QString>

#include "platform/UserDefaults.h"

namespace kestrelbay {

/// The settings as one flat JSON object in a file that people may also edit, or
/// keep elsewhere behind symbolic links. The file is read once, and again when it has
/// changed. What else is in the object stays there, in its order. A file that
/// holds no JSON object is kept beside the new one (DataFile::OldFile::Keep).
class JsonUserDefaults final : public UserDefaults {
public:
    /// Two changes of a file within this time may bear the same time: FAT, the coarsest
    /// file system in use, counts in steps of two seconds. So long after a change the
    /// system is asked as well whether it was written since; where it cannot say, the file
    /// is read at each use.
    static constexpr std::chrono::seconds kTimeStep{2};

    explicit JsonUserDefaults(const QString &path, std::chrono::nanoseconds timeStep = kTimeStep);
    ~JsonUserDefaults() override;

    [[nodiscard]] std::optional<QString> string(const QString &key) const override;
    [[nodiscard]] std::optional<bool> boolean(const QString &key) const override;
    void setString(const QString &key, const QString &value) override;
    void setBoolean(const QString &key, bool value) override;

private:
    class File;

    const std::unique_ptr<File> file_;
};

}  // namespace kestrelbay
