#pragma once

#include <QStringView>

namespace kestrelbay {

/// Is the text a URL by the grammar of RFC 3986, with a scheme? No character is
/// forgiven, none is taken for an escape that should have been there.
[[nodiscard]] bool isUrl(QStringView text);

}  // namespace kestrelbay
