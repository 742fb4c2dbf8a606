# cmake -DGENERATOR=scrivo -DSOURCES=folder -DIMAGES=folder -DWEB=folder -DOUTPUT=file -P compile_help.cmake
#
# Compiles the web in SOURCES with the pictures in IMAGES, in a copy WEB. Whatever the generator or the compiler has to
# say about it is an error.
file(REMOVE_RECURSE "${WEB}")
file(COPY "${SOURCES}/" DESTINATION "${WEB}" PATTERN "CMakeLists.txt" EXCLUDE PATTERN "*.cmake" EXCLUDE)
foreach(picture compile run decompile error site-search)
  file(COPY "${IMAGES}/${picture}.png" DESTINATION "${WEB}/images")
endforeach()
execute_process(COMMAND "${GENERATOR}" compile --strict -o "${OUTPUT}" "${WEB}"
  RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE complaints)
if(NOT status EQUAL 0 OR complaints MATCHES "warning:")
  file(REMOVE "${OUTPUT}")
  message(FATAL_ERROR "The help does not compile cleanly (${status}):\n${said}${complaints}")
endif()
