#include "platform/macos/cocoa/CFStrings.h"

namespace kestrelbay {

CFOwner<CFStringRef> toCFString(const QString &text) {
    return CFOwner<CFStringRef>(
        CFStringCreateWithCharacters(kCFAllocatorDefault, text.utf16(), text.size()));
}

QString toQString(CFStringRef text) {
    if (!text)
        return {};
    QString result(CFStringGetLength(text), Qt::Uninitialized);
    // A Unicode unit of either system is one of UTF-16.
    static_assert(sizeof(UniChar) == sizeof(QChar));
    CFStringGetCharacters(text, CFRangeMake(0, result.size()),
                          reinterpret_cast<UniChar *>(result.data()));
    return result;
}

}  // namespace kestrelbay
