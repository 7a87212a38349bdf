#pragma once

#include <QString>

#include "files/DataFile.h"
#include "platform/UserDefaults.h"

namespace kestrelbay {

/// The settings as one flat JSON object in a file that people may also edit, or
/// keep elsewhere behind symbolic links. Nothing is cached. What else is in the
/// object stays there, in its order. A file that holds no JSON object is kept
/// beside the new one (DataFile::OldFile::Keep).
class JsonUserDefaults final : public UserDefaults {
public:
    explicit JsonUserDefaults(QString path);

    [[nodiscard]] std::optional<QString> string(const QString &key) const override;
    [[nodiscard]] std::optional<bool> boolean(const QString &key) const override;
    [[nodiscard]] bool contains(const QString &key) const override;
    void setString(const QString &key, const QString &value) override;
    void setBoolean(const QString &key, bool value) override;

private:
    const DataFile file_;
};

}  // namespace kestrelbay
