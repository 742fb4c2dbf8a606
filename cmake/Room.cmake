# A room is one library target: the folder's sources by name, and the rooms that it may see as its link line.
#
#   scrivo_room(NAME room SOURCES a.cc … [WIN32 win32/b.cc …] [POSIX posix/c.cc …] [SEES other_room …])
#
# WIN32 and POSIX bodies stand for one another: the build takes those of the system it builds for.

add_library(scrivo_options INTERFACE)
target_include_directories(scrivo_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(scrivo_options INTERFACE -Wall -Wextra -Wpedantic)
if(SCRIVO_WARNINGS_AS_ERRORS)
  target_compile_options(scrivo_options INTERFACE -Werror)
endif()
target_compile_definitions(scrivo_options INTERFACE SCRIVO_VERSION="${PROJECT_VERSION}")
if(SCRIVO_SANITIZE)
  target_compile_options(scrivo_options INTERFACE
    -fsanitize=${SCRIVO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(scrivo_options INTERFACE -fsanitize=${SCRIVO_SANITIZE})
endif()
if(NOT WIN32)
  find_package(Threads REQUIRED)
  target_link_libraries(scrivo_options INTERFACE Threads::Threads)
endif()

# What rooms are compiled with besides. Programs for Windows that come with the tests are there to be tested, and -O1 takes
# half the time of -O3; those that are handed out are built without tests. With -O1, GCC takes the move of a short string for
# one that may leave its buffer; the warnings of that are left to -O3.
function(scrivo_room_options target)
  target_link_libraries(${target} PUBLIC scrivo_options)
  if(SCRIVO_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  if(WIN32 AND SCRIVO_TESTS)
    target_compile_options(${target} PRIVATE
      -O1 -Wno-array-bounds -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread)
  endif()
endfunction()

# The standard headers that most rooms include, compiled once for all of them.
file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/standard_headers.cc" CONTENT "")
add_library(scrivo_standard_headers OBJECT EXCLUDE_FROM_ALL "${CMAKE_BINARY_DIR}/standard_headers.cc")
scrivo_room_options(scrivo_standard_headers)
target_precompile_headers(scrivo_standard_headers PRIVATE
  <algorithm> <array> <cstdint> <cstring> <filesystem> <functional> <map> <memory> <optional> <set> <span> <string>
  <string_view> <system_error> <unordered_map> <unordered_set> <utility> <vector>)

function(scrivo_room)
  cmake_parse_arguments(ROOM "" "NAME" "SOURCES;WIN32;POSIX;SEES" ${ARGN})
  if(WIN32)
    list(APPEND ROOM_SOURCES ${ROOM_WIN32})
  else()
    list(APPEND ROOM_SOURCES ${ROOM_POSIX})
  endif()
  if(ROOM_SOURCES)
    add_library(${ROOM_NAME} STATIC ${ROOM_SOURCES})
    scrivo_room_options(${ROOM_NAME})
    target_link_libraries(${ROOM_NAME} PUBLIC ${ROOM_SEES})
    target_precompile_headers(${ROOM_NAME} REUSE_FROM scrivo_standard_headers)
  else()
    add_library(${ROOM_NAME} INTERFACE)
    target_link_libraries(${ROOM_NAME} INTERFACE scrivo_options ${ROOM_SEES})
  endif()
endfunction()

# One GoogleTest program a room: scrivo_test(NAME room SOURCES a_test.cc … [SEES room …]) makes bin/<room>_tests.
function(scrivo_test)
  cmake_parse_arguments(TEST "" "NAME" "SOURCES;WIN32;POSIX;SEES" ${ARGN})
  if(WIN32)
    list(APPEND TEST_SOURCES ${TEST_WIN32})
  else()
    list(APPEND TEST_SOURCES ${TEST_POSIX})
  endif()
  add_executable(${TEST_NAME}_tests ${TEST_SOURCES})
  target_link_libraries(${TEST_NAME}_tests PRIVATE ${TEST_SEES} scrivo_gtest_main)
  target_precompile_headers(${TEST_NAME}_tests REUSE_FROM scrivo_gtest_main)
  add_test(NAME ${TEST_NAME} COMMAND ${TEST_NAME}_tests)
endfunction()

# A libFuzzer program: scrivo_fuzzer(NAME target SOURCES a_fuzz.cc SEES room …) makes bin/fuzz_<target>; its corpus is
# tests/fuzz/<target>/.
function(scrivo_fuzzer)
  cmake_parse_arguments(FUZZ "" "NAME" "SOURCES;SEES" ${ARGN})
  if(SCRIVO_FUZZ)
    add_executable(fuzz_${FUZZ_NAME} ${FUZZ_SOURCES})
    scrivo_room_options(fuzz_${FUZZ_NAME})
    target_link_libraries(fuzz_${FUZZ_NAME} PRIVATE ${FUZZ_SEES})
    target_precompile_headers(fuzz_${FUZZ_NAME} REUSE_FROM scrivo_standard_headers)
    target_link_options(fuzz_${FUZZ_NAME} PRIVATE -fsanitize=fuzzer)
  endif()
endfunction()

# Gives a Windows program version 6 of the common controls.
function(scrivo_use_common_controls target)
  enable_language(RC)
  target_sources(${target} PRIVATE "${PROJECT_SOURCE_DIR}/ui/win32/program.rc")
  set_source_files_properties("${PROJECT_SOURCE_DIR}/ui/win32/program.rc" PROPERTIES
    COMPILE_OPTIONS "-I${PROJECT_SOURCE_DIR}")
endfunction()
