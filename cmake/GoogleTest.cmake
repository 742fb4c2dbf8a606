# GoogleTest from Debian's source package, built with the flags of the preset: the packaged library fits neither the
# Windows compilers nor the sanitizers.
set(gtest_source /usr/src/googletest/googletest)
add_library(scrivo_gtest_main STATIC EXCLUDE_FROM_ALL
  ${gtest_source}/src/gtest-all.cc ${gtest_source}/src/gtest_main.cc)
target_include_directories(scrivo_gtest_main PRIVATE ${gtest_source})
target_include_directories(scrivo_gtest_main SYSTEM PUBLIC ${gtest_source}/include)
if(SCRIVO_SANITIZE)
  target_compile_options(scrivo_gtest_main PRIVATE -fsanitize=address,undefined)
endif()
if(NOT WIN32)
  target_link_libraries(scrivo_gtest_main PUBLIC Threads::Threads)
endif()
