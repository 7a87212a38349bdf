#pragma once

// Stands for <os/log.h>, where os_log_with_type is a macro that takes only a literal as
// its format.

#include <stdint.h>

extern "C" {

typedef struct os_log_s *os_log_t;
typedef uint8_t os_log_type_t;

enum : os_log_type_t {
    OS_LOG_TYPE_DEFAULT = 0x00,
    OS_LOG_TYPE_INFO = 0x01,
    OS_LOG_TYPE_DEBUG = 0x02,
    OS_LOG_TYPE_ERROR = 0x10,
    OS_LOG_TYPE_FAULT = 0x11,
};

os_log_t os_log_create(const char *subsystem, const char *category);
void kestrelbayLog(os_log_t log, os_log_type_t type, const char *format, const char *text);
}

#define os_log_with_type(log, type, format, text) kestrelbayLog(log, type, "" format "", text)
