# vyra_add_flight_test(<name> FLIGHT <file> PLUGINS <target>... [FRAMES <count>] [RATE <hz>] [SYSTEM <folder>]
#                      [ARGUMENTS <argument>...])
#
# A CTest test that flies vyra-sim over a simulator folder with these plugins, targets of vyra_add_plugin(). It
# passes when everything happened that the flight file expects.
#
#   enable_testing()
#   vyra_add_flight_test(fuel.burns FLIGHT fuel-burns.json PLUGINS fuel)
#
# FRAMES frames are flown at RATE frames per simulated second: without these as many as the flight file says, or
# else 600 at 60. SYSTEM is a simulator
# folder to begin with, with aircraft, scenery or more plugins, and ARGUMENTS go to `vyra-sim run` as they are.
# As with add_test(), the word NAME may stand before the name.
#
# The flight leaves its simulator folder, its log, report.json and junit.xml in flights/<name>/ of the build
# folder (flights/<configuration>/<name>/ where the generator has several).
include_guard(GLOBAL)

function(vyra_add_flight_test name)
  set(arguments ${ARGN})
  if(name STREQUAL "NAME")
    list(POP_FRONT arguments name)
  endif()
  cmake_parse_arguments(test "" "FLIGHT;FRAMES;RATE;SYSTEM" "PLUGINS;ARGUMENTS" ${arguments})
  set(call "vyra_add_flight_test(${name})")
  if(test_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "${call} does not know ${test_UNPARSED_ARGUMENTS}.")
  elseif(NOT test_FLIGHT OR NOT test_PLUGINS)
    message(FATAL_ERROR "${call} needs FLIGHT and PLUGINS.")
  endif()
  cmake_path(ABSOLUTE_PATH test_FLIGHT)
  if(NOT EXISTS "${test_FLIGHT}")
    message(FATAL_ERROR "${call}: there is no flight file ${test_FLIGHT}.")
  endif()
  if(test_SYSTEM)
    cmake_path(ABSOLUTE_PATH test_SYSTEM)
  endif()

  set(modules "")
  foreach(plugin IN LISTS test_PLUGINS)
    list(APPEND modules "$<TARGET_FILE:${plugin}>")
  endforeach()
  get_property(isMultiConfig GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
  string(REPLACE "/" "_" folderName "${name}")
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/flights$<$<BOOL:${isMultiConfig}>:/$<CONFIG>>/${folderName}")
  add_test(
    NAME "${name}"
    COMMAND
      "${CMAKE_COMMAND}" "-DSIMULATOR=$<TARGET_FILE:VYRA::vyra-sim>" "-DFOLDER=${folder}" "-DFLIGHT=${test_FLIGHT}"
      "-DFRAMES=${test_FRAMES}" "-DRATE=${test_RATE}" "-DSYSTEM=${test_SYSTEM}" "-DMODULES=${modules}"
      "-DARGUMENTS=${test_ARGUMENTS}" -P "${VYRA_CMAKE_FOLDER}/VYRAFlyTest.cmake")
endfunction()
