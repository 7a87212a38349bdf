#pragma once

// Stands for <MacTypes.h>.

typedef unsigned char Boolean;
typedef unsigned char UInt8;
typedef unsigned short UInt16;
typedef unsigned int UInt32;
typedef int SInt32;
typedef SInt32 OSStatus;
typedef UInt32 OptionBits;
typedef UInt32 FourCharCode;
typedef unsigned long UniCharCount;

enum {
    noErr = 0,
};
