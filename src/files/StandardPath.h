#pragma once

#include <QString>

namespace kestrelbay {

/// The path with "." and ".." resolved and without needless slashes. The root is its own
/// parent. Links are not followed, and no name is spelled anew.
[[nodiscard]] QString standardPath(const QString &path);

}  // namespace kestrelbay
