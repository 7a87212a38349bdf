#pragma once

#include "platform/UserDefaults.h"

namespace kestrelbay {

/// The settings as one flat JSON object in a file that people may also edit, or
/// keep elsewhere behind symbolic links. Nothing is cached. A write changes the
/// text of the one value it is about; what else is in the file stays as it is, to
/// the letter. A file that holds no JSON object is copied to
/// "<path>.unreadable" (or "….unreadable.2", …) before it is replaced; a file
/// that can't be read is left alone.
class JsonUserDefaults final : public UserDefaults {
public:
    explicit JsonUserDefaults(QString path);

    [[nodiscard]] std::optional<QString> string(const QString &key) const override;
    [[nodiscard]] std::optional<bool> boolean(const QString &key) const override;
    [[nodiscard]] bool contains(const QString &key) const override;
    void setString(const QString &key, const QString &value) override;
    void setBoolean(const QString &key, bool value) override;

private:
    const QString path_;
};

}  // namespace kestrelbay
