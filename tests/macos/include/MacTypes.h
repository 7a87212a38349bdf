#pragma once

// Stands for <MacTypes.h>.

typedef int OSStatus;
typedef unsigned char UInt8;
typedef unsigned short UInt16;
typedef unsigned int UInt32;
typedef UInt32 OptionBits;
typedef unsigned long UniCharCount;

enum {
    noErr = 0,
};
