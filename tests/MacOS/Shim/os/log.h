#pragma once

#import <os/object.h>
#include <stdbool.h>
#include <stdint.h>

OS_OBJECT_DECL(os_log);

#ifdef __cplusplus
extern "C" {
#endif

typedef uint8_t os_log_type_t;

enum : os_log_type_t {
    OS_LOG_TYPE_DEFAULT = 0x00,
    OS_LOG_TYPE_INFO = 0x01,
    OS_LOG_TYPE_DEBUG = 0x02,
    OS_LOG_TYPE_ERROR = 0x10,
    OS_LOG_TYPE_FAULT = 0x11,
};

struct os_log_s;
extern struct os_log_s _os_log_default;
#define OS_LOG_DEFAULT ((__bridge os_log_t)(void*)&_os_log_default)
#define OS_LOG_DISABLED ((os_log_t)0)

extern void* __dso_handle;

OS_OBJECT_RETURNS_RETAINED os_log_t os_log_create(const char* subsystem, const char* category);
bool os_log_type_enabled(os_log_t log, os_log_type_t type);
void _os_log_impl(void* dso,
                  os_log_t log,
                  os_log_type_t type,
                  const char* format,
                  uint8_t* buffer,
                  uint32_t size);

#ifdef __cplusplus
}
#endif

// The format goes into a section of its own, so it must be a literal; the compiler encodes the
// values and checks them against the format.
#define os_log_with_type(log, type, format, ...)                                                   \
    __extension__({                                                                                \
        os_log_t _log = (log);                                                                     \
        os_log_type_t _type = (type);                                                              \
        if (os_log_type_enabled(_log, _type)) {                                                    \
            static const char _format[]                                                            \
                __attribute__((section("__TEXT,__oslogstring,cstring_literals"))) = format;        \
            uint8_t _buffer[__builtin_os_log_format_buffer_size(format, ##__VA_ARGS__)];           \
            _os_log_impl(                                                                          \
                &__dso_handle,                                                                     \
                _log,                                                                              \
                _type,                                                                             \
                _format,                                                                           \
                static_cast<uint8_t*>(__builtin_os_log_format(_buffer, format, ##__VA_ARGS__)),    \
                static_cast<uint32_t>(sizeof(_buffer)));                                           \
        }                                                                                          \
    })

#define os_log(log, format, ...) os_log_with_type(log, OS_LOG_TYPE_DEFAULT, format, ##__VA_ARGS__)
#define os_log_info(log, format, ...) os_log_with_type(log, OS_LOG_TYPE_INFO, format, ##__VA_ARGS__)
#define os_log_debug(log, format, ...)                                                             \
    os_log_with_type(log, OS_LOG_TYPE_DEBUG, format, ##__VA_ARGS__)
#define os_log_error(log, format, ...)                                                             \
    os_log_with_type(log, OS_LOG_TYPE_ERROR, format, ##__VA_ARGS__)
#define os_log_fault(log, format, ...)                                                             \
    os_log_with_type(log, OS_LOG_TYPE_FAULT, format, ##__VA_ARGS__)
