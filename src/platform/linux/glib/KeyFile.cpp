#include "platform/linux/glib/KeyFile.h"

#include <QFile>
#include <QFileInfo>

namespace kestrelbay {

namespace {

QString taken(char *text) {
    const GCharPtr owned(text);
    return QString::fromUtf8(owned.get());
}

}  // namespace

std::optional<KeyFile> KeyFile::parse(const QByteArray &text, Keep keep) {
    constexpr auto kEverything =
        static_cast<GKeyFileFlags>(G_KEY_FILE_KEEP_COMMENTS | G_KEY_FILE_KEEP_TRANSLATIONS);
    std::optional<KeyFile> file(std::in_place);
    if (!g_key_file_load_from_data(file->get(), text.constData(), static_cast<gsize>(text.size()),
                                   keep == Keep::Everything ? kEverything : G_KEY_FILE_NONE,
                                   nullptr))
        file.reset();
    return file;
}

std::optional<KeyFile> KeyFile::read(const QString &path) {
    std::optional<KeyFile> file(std::in_place);
    if (!QFileInfo(path).isFile() ||
        !g_key_file_load_from_file(file->get(), QFile::encodeName(path).constData(),
                                   G_KEY_FILE_NONE, nullptr))
        file.reset();
    return file;
}

bool KeyFile::has(const char *key, const char *group) const {
    return g_key_file_has_key(file_.get(), group, key, nullptr) != FALSE;
}

QString KeyFile::string(const char *key, const char *group) const {
    return taken(g_key_file_get_string(file_.get(), group, key, nullptr));
}

QString KeyFile::localized(const char *key) const {
    return taken(g_key_file_get_locale_string(file_.get(), kDesktopEntry, key, nullptr, nullptr));
}

bool KeyFile::boolean(const char *key, bool otherwise) const {
    GError *raw = nullptr;
    const bool value = g_key_file_get_boolean(file_.get(), kDesktopEntry, key, &raw) != FALSE;
    const GErrorPtr error(raw);
    return error ? otherwise : value;
}

int KeyFile::number(const char *key, const char *group) const {
    return g_key_file_get_integer(file_.get(), group, key, nullptr);
}

std::optional<QStringList> KeyFile::list(const char *key) const {
    if (!has(key))
        return std::nullopt;
    const GStringList values(
        g_key_file_get_string_list(file_.get(), kDesktopEntry, key, nullptr, nullptr));
    return textsOf(values);
}

bool KeyFile::isDesktopEntry() const {
    return g_key_file_has_group(file_.get(), kDesktopEntry) != FALSE;
}

bool KeyFile::isApplication() const {
    return string(G_KEY_FILE_DESKTOP_KEY_TYPE) ==
           QLatin1StringView(G_KEY_FILE_DESKTOP_TYPE_APPLICATION);
}

void KeyFile::set(const char *key, const QString &value) {
    g_key_file_set_string(file_.get(), kDesktopEntry, key, value.toUtf8().constData());
}

void KeyFile::remove(const char *key) {
    g_key_file_remove_key(file_.get(), kDesktopEntry, key, nullptr);
}

QByteArray KeyFile::text() const {
    gsize length = 0;
    const GCharPtr text(g_key_file_to_data(file_.get(), &length, nullptr));
    return {text.get(), static_cast<qsizetype>(length)};
}

}  // namespace kestrelbay
