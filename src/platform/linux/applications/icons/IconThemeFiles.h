#pragma once

#include <optional>
#include <vector>

#include <QSet>
#include <QString>
#include <QStringList>

namespace kestrelbay {

/// Finds the files of icons in the desktop's icon themes, for many icons of one size on
/// any one thread; Qt's own search belongs to the main thread. Folders are read when
/// first needed and then remembered, so an object is for one list, not to be kept.
class IconThemeFiles {
public:
    /// The first theme that has an icon wins, over what each inherits from; hicolor is
    /// always the last. The size is in pixels.
    IconThemeFiles(const QStringList &themes, int pixels);

    /// The best file for the size: one made for it, then a scalable one, then the next
    /// larger. Empty when no theme knows the name.
    [[nodiscard]] QString find(const QString &name);

private:
    struct Folder {
        QString path;
        /// How far from what is wanted; 0 is made for it.
        int distance = 0;
        std::optional<QSet<QString>> files;
    };

    void addTheme(const QString &name);

    const QStringList roots_;
    const int pixels_;
    QStringList known_;
    /// Theme by theme, in each those that come nearest to the size first.
    std::vector<Folder> folders_;
};

}  // namespace kestrelbay
