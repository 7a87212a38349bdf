#include "platform/macos/cocoa/NSStrings.h"

namespace kestrelbay {

NSString *toNSString(const QString &text) {
    return [NSString stringWithCharacters:text.utf16() length:static_cast<NSUInteger>(text.size())];
}

QString toQString(NSString *text) {
    if (!text)
        return {};
    QString result(static_cast<qsizetype>(text.length), Qt::Uninitialized);
    static_assert(sizeof(unichar) == sizeof(QChar));
    [text getCharacters:reinterpret_cast<unichar *>(result.data())
                  range:NSMakeRange(0, text.length)];
    return result;
}

NSURL *toNSURL(const QUrl &url) {
    if (!url.isValid())
        return nil;
    if (url.isLocalFile())
        return [NSURL fileURLWithPath:toNSString(url.toLocalFile())];
    return [NSURL URLWithString:toNSString(QString::fromLatin1(url.toEncoded()))];
}

}  // namespace kestrelbay
