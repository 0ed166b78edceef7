include(GoogleTest)
find_package(GTest REQUIRED)

# pastewise_test(name SOURCES ... LINKS ... [LABELS ...] [TIMEOUT s] [SERIAL]): a test program whose
# cases CTest lists one by one.
function(pastewise_test name)
  cmake_parse_arguments(arg "SERIAL" "TIMEOUT" "SOURCES;LINKS;LABELS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE pastewise_settings GTest::gmock_main ${arg_LINKS})
  # What is tested is optimised. To optimise the tests would take half of the time of a build.
  target_compile_options(${name} PRIVATE -O0)
  set_target_properties(${name} PROPERTIES
    RUNTIME_OUTPUT_DIRECTORY "${PROJECT_BINARY_DIR}/tests")
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 60)
  endif()
  set(properties TIMEOUT ${arg_TIMEOUT})
  if(arg_LABELS)
    list(APPEND properties LABELS "${arg_LABELS}")
  endif()
  if(arg_SERIAL)
    list(APPEND properties RUN_SERIAL TRUE)
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 30 PROPERTIES ${properties})
endfunction()
