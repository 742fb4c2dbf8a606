# GoogleTest from Debian's source package, built with the flags of the preset: the packaged library fits neither the
# Windows compilers nor the sanitizers.
set(gtest_source /usr/src/googletest/googletest)
if(NOT EXISTS ${gtest_source}/src/gtest-all.cc)
  message(FATAL_ERROR "SCRIVO_TESTS needs GoogleTest's sources in ${gtest_source}: install Debian's package googletest")
endif()
add_library(scrivo_gtest STATIC EXCLUDE_FROM_ALL ${gtest_source}/src/gtest-all.cc)
target_include_directories(scrivo_gtest PRIVATE ${gtest_source})
target_include_directories(scrivo_gtest SYSTEM PUBLIC ${gtest_source}/include)
target_compile_options(scrivo_gtest PRIVATE -O0)
if(SCRIVO_SANITIZE)
  target_compile_options(scrivo_gtest PRIVATE -fsanitize=${SCRIVO_SANITIZE})
endif()
if(NOT WIN32)
  target_link_libraries(scrivo_gtest PUBLIC Threads::Threads)
endif()

# What every test file is compiled with, and the headers that most of them spend their time on, compiled once.
add_library(scrivo_gtest_main STATIC EXCLUDE_FROM_ALL ${gtest_source}/src/gtest_main.cc)
target_link_libraries(scrivo_gtest_main PUBLIC scrivo_options scrivo_gtest)
# GoogleTest's macros take the optimizer longer than all the rest; what is tested keeps its own flags.
target_compile_options(scrivo_gtest_main PUBLIC -O0)
target_precompile_headers(scrivo_gtest_main PRIVATE
  <gtest/gtest.h> <algorithm> <filesystem> <fstream> <functional> <map> <memory> <sstream> <string> <vector>)
