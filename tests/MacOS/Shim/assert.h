// A failed assertion under the name that macOS exports.
#include_next <assert.h>

#ifdef __cplusplus
extern "C" {
#endif

void __assert_rtn(const char* function, const char* file, int line, const char* expression)
    __attribute__((noreturn));

#ifdef __cplusplus
}
#endif

#ifndef NDEBUG
#undef assert
#define assert(x) ((void)((x) || (__assert_rtn(__func__, __FILE__, __LINE__, #x), 0)))
#endif
