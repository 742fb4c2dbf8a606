# Finds hhc, Scrivo's help compiler, and adds a command that compiles help projects with it.
#
#   list(APPEND CMAKE_MODULE_PATH ".../cmake")
#   find_package(HTMLHelp REQUIRED)
#   htmlhelp_add(kettle_help PROJECT doc/help.hhp OUTPUT doc/help.chm DEPENDS doc/index.htm)
#
# Looks in HTMLHelp_ROOT, the PATH, and a folder bin beside the one of this file.
# Sets HTMLHelp_FOUND, HTMLHelp_COMPILER, and HTML_HELP_COMPILER for scripts that expect the name of
# CMake's own module of this name, which looks for the compiler of HTML Help Workshop.

find_program(HTMLHelp_COMPILER NAMES hhc
  HINTS ${HTMLHelp_ROOT} ENV HTMLHelp_ROOT ${CMAKE_CURRENT_LIST_DIR}/../bin
  PATH_SUFFIXES bin)
set(HTML_HELP_COMPILER ${HTMLHelp_COMPILER})
include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(HTMLHelp REQUIRED_VARS HTMLHelp_COMPILER)
mark_as_advanced(HTMLHelp_COMPILER)

# htmlhelp_add(TARGET PROJECT file.hhp OUTPUT file.chm [DEPENDS files...])
# OUTPUT is what the project calls its help file; both names count from the current source folder.
function(htmlhelp_add target)
  cmake_parse_arguments(PARSE_ARGV 1 help "" "PROJECT;OUTPUT" "DEPENDS")
  get_filename_component(project "${help_PROJECT}" ABSOLUTE)
  get_filename_component(output "${help_OUTPUT}" ABSOLUTE)
  # With --gnu the exit status is the one that build tools expect.
  add_custom_command(OUTPUT "${output}"
    COMMAND ${HTMLHelp_COMPILER} --gnu "${project}"
    DEPENDS "${project}" ${help_DEPENDS} VERBATIM)
  add_custom_target(${target} ALL DEPENDS "${output}")
endfunction()
