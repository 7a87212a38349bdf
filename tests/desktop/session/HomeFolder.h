#pragma once

#include <QByteArray>
#include <QProcessEnvironment>
#include <QString>
#include <QTemporaryDir>

namespace kestrelbay::desktop {

/// A user's home folder with nobody's settings but ours: the XDG folders, default
/// applications, and desktop entries of programs that only record how they were
/// started.
class HomeFolder {
public:
    HomeFolder();

    /// The home folder itself; it is called "kestrel-home".
    [[nodiscard]] QString path() const;
    [[nodiscard]] QString path(const QString &below) const;
    [[nodiscard]] QString config(const QString &below) const;
    /// Of a desktop entry in this home folder.
    [[nodiscard]] QString applicationPath(const QString &entry) const;
    [[nodiscard]] QString rulesPath() const;
    [[nodiscard]] QString settingsPath() const;

    /// HOME and the XDG folders, and what keeps programs from services of the machine's.
    void addTo(QProcessEnvironment &environment) const;

    /// Creates the folders above the file as well. Throws std::runtime_error.
    static void write(const QString &path, const QByteArray &contents);
    [[nodiscard]] static QByteArray read(const QString &path);

private:
    QTemporaryDir folder_;
};

/// These programs run until they are killed; what they were started with stands
/// behind this word in their command line.
inline constexpr const char *kArgumentsRecorder = "kestrel-arguments";
inline constexpr const char *kUrlRecorder = "kestrel-url";

}  // namespace kestrelbay::desktop
