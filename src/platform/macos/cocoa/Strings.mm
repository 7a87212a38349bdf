#include "platform/macos/cocoa/Strings.h"

namespace kestrelbay {

// A Unicode unit of either system is one of UTF-16.
static_assert(sizeof(unichar) == sizeof(QChar) && sizeof(UniChar) == sizeof(QChar));

NSString *_Nonnull toNSString(const QString &text) {
    return [NSString stringWithCharacters:text.utf16() length:static_cast<NSUInteger>(text.size())];
}

CFOwner<CFStringRef> toCFString(const QString &text) {
    return CFOwner<CFStringRef>(
        CFStringCreateWithCharacters(kCFAllocatorDefault, text.utf16(), text.size()));
}

QString toQString(NSString *_Nullable text) {
    if (!text)
        return {};
    QString result(static_cast<qsizetype>(text.length), Qt::Uninitialized);
    [text getCharacters:reinterpret_cast<unichar *>(result.data())
                  range:NSMakeRange(0, text.length)];
    return result;
}

QString toQString(CFStringRef _Nullable text) {
    if (!text)
        return {};
    QString result(CFStringGetLength(text), Qt::Uninitialized);
    CFStringGetCharacters(text, CFRangeMake(0, result.size()),
                          reinterpret_cast<UniChar *>(result.data()));
    return result;
}

NSURL *_Nullable toNSURL(const QUrl &file) {
    return file.isLocalFile() ? [NSURL fileURLWithPath:toNSString(file.toLocalFile())] : nil;
}

}  // namespace kestrelbay
