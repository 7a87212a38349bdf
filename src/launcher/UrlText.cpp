#include "launcher/UrlText.h"

#include <algorithm>

#include <arpa/inet.h>

#include <QByteArray>
#include <QLatin1StringView>

namespace kestrelbay {

namespace {

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

bool isLetter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isHexDigit(QChar c) {
    return isDigit(c) || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

/// What may stand anywhere: "unreserved" and "sub-delims".
bool isPlain(QChar c) {
    return isLetter(c) || isDigit(c) || QLatin1StringView("-._~!$&'()*+,;=").contains(c);
}

bool hasOnlyDigits(QStringView text) {
    return std::ranges::all_of(text, isDigit);
}

/// Plain characters, these others, and escapes.
bool isMadeOf(QStringView text, QLatin1StringView others) {
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'%') {
            if (!isPlain(text[i]) && !others.contains(text[i]))
                return false;
            continue;
        }
        if (i + 2 >= text.size() || !isHexDigit(text[i + 1]) || !isHexDigit(text[i + 2]))
            return false;
        i += 2;
    }
    return true;
}

bool isScheme(QStringView text) {
    return !text.isEmpty() && isLetter(text.front()) && std::ranges::all_of(text, [](QChar c) {
        return isLetter(c) || isDigit(c) || c == u'+' || c == u'-' || c == u'.';
    });
}

/// What stands between brackets in place of a host's name.
bool isIpLiteral(QStringView text) {
    if (text.startsWith(u'v', Qt::CaseInsensitive)) {
        const qsizetype dot = text.indexOf(u'.');
        const QStringView address = text.sliced(dot + 1);
        return dot > 1 && std::ranges::all_of(text.sliced(1, dot - 1), isHexDigit) &&
               !address.isEmpty() && !address.contains(u'%') &&
               isMadeOf(address, QLatin1StringView(":"));
    }
    in6_addr address{};
    return std::ranges::all_of(text,
                               [](QChar c) { return isHexDigit(c) || c == u':' || c == u'.'; }) &&
           inet_pton(AF_INET6, text.toLatin1().constData(), &address) == 1;
}

bool isAuthority(QStringView text) {
    if (const qsizetype at = text.indexOf(u'@'); at >= 0) {
        if (!isMadeOf(text.first(at), QLatin1StringView(":")))
            return false;
        text = text.sliced(at + 1);
    }
    if (text.startsWith(u'[')) {
        const qsizetype end = text.indexOf(u']');
        if (end < 0 || !isIpLiteral(text.sliced(1, end - 1)))
            return false;
        const QStringView port = text.sliced(end + 1);
        return port.isEmpty() || (port.startsWith(u':') && hasOnlyDigits(port.sliced(1)));
    }
    const qsizetype colon = text.indexOf(u':');
    return colon < 0 ? isMadeOf(text, {})
                     : isMadeOf(text.first(colon), {}) && hasOnlyDigits(text.sliced(colon + 1));
}

/// Takes what follows the first such mark off the text, and the mark.
QStringView takeBehind(QChar mark, QStringView &text) {
    const qsizetype at = text.indexOf(mark);
    if (at < 0)
        return {};
    const QStringView behind = text.sliced(at + 1);
    text = text.first(at);
    return behind;
}

}  // namespace

bool isUrl(QStringView text) {
    const QLatin1StringView ofPath(":@/");
    const QLatin1StringView ofQuery(":@/?");
    const QStringView fragment = takeBehind(u'#', text);
    const QStringView query = takeBehind(u'?', text);
    QStringView path = takeBehind(u':', text);
    if (path.isNull() || !isScheme(text))
        return false;
    if (path.startsWith(QLatin1StringView("//"))) {
        const QStringView rest = path.sliced(2);
        const qsizetype slash = rest.indexOf(u'/');
        if (!isAuthority(slash < 0 ? rest : rest.first(slash)))
            return false;
        path = slash < 0 ? QStringView() : rest.sliced(slash);
    }
    return isMadeOf(path, ofPath) && isMadeOf(query, ofQuery) && isMadeOf(fragment, ofQuery);
}

}  // namespace kestrelbay
