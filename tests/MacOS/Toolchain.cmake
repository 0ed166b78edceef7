# Compiles and links the program for macOS on Linux, against the substitute SDK that make-sdk makes:
# a check of the sources, never something to ship.
#
# Needs CMAKE_OSX_SYSROOT, the substitute's folder, and CMAKE_OSX_ARCHITECTURES, one processor.

set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR "${CMAKE_OSX_ARCHITECTURES}")

find_program(CLANG clang++-19 REQUIRED)
set(CMAKE_CXX_COMPILER "${CLANG}")
set(CMAKE_OBJCXX_COMPILER "${CLANG}")
set(CMAKE_CXX_COMPILER_TARGET "${CMAKE_OSX_ARCHITECTURES}-apple-macos")
set(CMAKE_OBJCXX_COMPILER_TARGET "${CMAKE_CXX_COMPILER_TARGET}")
set(CMAKE_AR llvm-ar-19 CACHE FILEPATH "")
set(CMAKE_RANLIB llvm-ranlib-19 CACHE FILEPATH "")
set(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-19 CACHE FILEPATH "")
set(CMAKE_OTOOL llvm-otool-19 CACHE FILEPATH "")

set(common "-D_GNU_SOURCE -isystem ${CMAKE_CURRENT_LIST_DIR}/Shim")
set(CMAKE_CXX_FLAGS_INIT "${common}")
# GNUstep's protocols have no optional methods.
set(CMAKE_OBJCXX_FLAGS_INIT "${common} -Wno-protocol")
set(CMAKE_EXE_LINKER_FLAGS_INIT "-fuse-ld=lld-19 -mlinker-version=609")
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(CMAKE_FIND_ROOT_PATH "${CMAKE_OSX_SYSROOT}/prefix")
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(ENV{PKG_CONFIG_LIBDIR} "${CMAKE_OSX_SYSROOT}/prefix/lib/pkgconfig")
set(ENV{PKG_CONFIG_PATH} "")
