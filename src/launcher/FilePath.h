#pragma once

#include <QString>
#include <QUrl>

namespace kestrelbay {

/// Replaces a leading "~" or "~name" by that user's home folder. Unchanged when
/// there is no such user.
[[nodiscard]] QString expandingTilde(const QString &path);

/// The URL of a file; a relative path starts at the current folder.
[[nodiscard]] QUrl fileUrl(const QString &path);

}  // namespace kestrelbay
