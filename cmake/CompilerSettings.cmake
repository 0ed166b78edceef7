# The compiler settings of every target. No processor is named: the compiler's defaults run
# everywhere.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/bin")

if(NOT CMAKE_BUILD_TYPE)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()

find_program(PASTEWISE_CCACHE ccache)
if(PASTEWISE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${PASTEWISE_CCACHE}")
endif()

# A newer compiler may warn about more, which must not stop a user's build.
option(PASTEWISE_WARNINGS_AS_ERRORS "Treat compiler warnings as errors" OFF)

add_library(pastewise_settings INTERFACE)
target_include_directories(pastewise_settings INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(pastewise_settings INTERFACE
  -Wall -Wextra -Wpedantic "$<$<BOOL:${PASTEWISE_WARNINGS_AS_ERRORS}>:-Werror>"
  -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wcast-align
  -Wnon-virtual-dtor -Woverloaded-virtual -Wformat=2 -Wimplicit-fallthrough
  # At -O3 g++ 12 reports overlapping copies inside the library's strings; a false alarm.
  "$<$<COMPILE_LANG_AND_ID:CXX,GNU>:-Wno-restrict>"
  # Keeps paths of the build machine out of the binaries.
  "-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")

# What is shipped on Linux makes an error in memory hard to exploit.
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  include(CheckPIESupported)
  check_pie_supported()
  target_compile_options(pastewise_settings INTERFACE
    -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
    "$<$<STREQUAL:${CMAKE_SYSTEM_PROCESSOR},x86_64>:-fcf-protection>")
  target_link_options(pastewise_settings INTERFACE -Wl,-z,relro,-z,now)
endif()

if(PASTEWISE_SANITIZERS)
  target_compile_options(pastewise_settings INTERFACE
    "-fsanitize=${PASTEWISE_SANITIZERS}" -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(pastewise_settings INTERFACE "-fsanitize=${PASTEWISE_SANITIZERS}")
endif()

# pastewise_library(name SOURCES ... LINKS ...): a static library of this project.
function(pastewise_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC pastewise_settings ${arg_LINKS} PRIVATE ${arg_PRIVATE_LINKS})
endfunction()
