#include "platform/linux/desktop/JsonUserDefaults.h"

#include <string>
#include <utility>

#include <nlohmann/json.hpp>

namespace kestrelbay {

namespace {

using Json = nlohmann::ordered_json;

/// Not an object when the text is not one.
Json parse(const QByteArray &text) {
    return Json::parse(text.begin(), text.end(), nullptr, false);
}

/// Absent when there is no such member.
std::optional<Json> member(const DataFile &file, const QString &key) {
    const Json object = parse(file.read().bytes);
    const auto found = object.is_object() ? object.find(key.toStdString()) : object.end();
    return found == object.end() ? std::nullopt : std::optional<Json>(*found);
}

void setMember(const DataFile &file, const QString &key, const Json &value) {
    const DataFile::Content content = file.read();
    Json object = parse(content.bytes);
    DataFile::OldFile old = DataFile::OldFile::Replace;
    if (!object.is_object()) {
        object = Json::object();
        // An editor or a crash may leave an empty file, in which nothing is lost.
        if (content.status == DataFile::Status::Unusable || !content.bytes.trimmed().isEmpty())
            old = DataFile::OldFile::Keep;
    }
    object[key.toStdString()] = value;
    constexpr int kIndent = 4;
    // A failed write is lost, as every caller of a settings store expects.
    [[maybe_unused]] const bool written =
        file.replace(QByteArray::fromStdString(object.dump(kIndent) + '\n'), old);
}

}  // namespace

JsonUserDefaults::JsonUserDefaults(QString path) : file_(std::move(path)) {}

std::optional<QString> JsonUserDefaults::string(const QString &key) const {
    const std::optional<Json> value = member(file_, key);
    if (!value || !value->is_string())
        return std::nullopt;
    return QString::fromStdString(value->get_ref<const std::string &>());
}

std::optional<bool> JsonUserDefaults::boolean(const QString &key) const {
    const std::optional<Json> value = member(file_, key);
    return value && value->is_boolean() ? std::optional(value->get<bool>()) : std::nullopt;
}

bool JsonUserDefaults::contains(const QString &key) const {
    return member(file_, key).has_value();
}

void JsonUserDefaults::setString(const QString &key, const QString &value) {
    setMember(file_, key, value.toStdString());
}

void JsonUserDefaults::setBoolean(const QString &key, bool value) {
    setMember(file_, key, value);
}

}  // namespace kestrelbay
