# vyra_add_plugin(<target> SOURCES <file>... [NAME <folder>] [RESOURCES <file>...] [DESTINATION <folder>]
#                 [OUTPUT <file>] [UNCHECKED])
#
# Builds a plugin: a module that is linked against libVYRA.so.2, in a plugin folder as simulators want it.
#
#   vyra_add_plugin(fuel SOURCES fuel.c RESOURCES tank.obj)
#
# builds plugins/fuel/64/lin.vyp in the build folder, with tank.obj beside the folder 64. NAME gives the folder
# another name than the target's. With a generator of several configurations each has a tree of its own:
# plugins/Release/fuel/64/lin.vyp. `cmake --install` puts the plugin folder below the prefix, in DESTINATION
# or, without it, in Resources/plugins: the prefix is the simulator's folder.
#
# OUTPUT puts the module into that very file instead, which ends in ".vyp", and installs nothing. So loose
# modules are built. With a generator of several configurations the path needs a $<CONFIG>.
#
# A symbol that no linked library has fails the build, and so does a module that exports no VyPluginStart.
# UNCHECKED builds such a module all the same, for tests of what simulators do with it.
include_guard(GLOBAL)
set(VYRA_CMAKE_FOLDER "${CMAKE_CURRENT_LIST_DIR}")

function(vyra_add_plugin target)
  cmake_parse_arguments(PARSE_ARGV 1 plugin "UNCHECKED" "NAME;DESTINATION;OUTPUT" "SOURCES;RESOURCES")
  set(call "vyra_add_plugin(${target})")
  if(plugin_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "${call} does not know ${plugin_UNPARSED_ARGUMENTS}.")
  elseif(NOT plugin_SOURCES)
    message(FATAL_ERROR "${call} needs SOURCES.")
  elseif(plugin_OUTPUT AND (plugin_NAME OR plugin_RESOURCES OR plugin_DESTINATION))
    message(FATAL_ERROR "${call}: OUTPUT is a file; NAME, RESOURCES and DESTINATION are for plugin folders.")
  elseif(plugin_OUTPUT AND NOT plugin_OUTPUT MATCHES "\\.vyp$")
    message(FATAL_ERROR "${call}: OUTPUT must end in .vyp.")
  endif()

  get_property(isMultiConfig GLOBAL PROPERTY GENERATOR_IS_MULTI_CONFIG)
  if(plugin_OUTPUT AND isMultiConfig AND NOT plugin_OUTPUT MATCHES "\\$<CONFIG>")
    message(FATAL_ERROR "${call}: with several configurations, OUTPUT must contain $<CONFIG>.")
  endif()
  if(NOT plugin_NAME)
    set(plugin_NAME "${target}")
  endif()
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/plugins$<$<BOOL:${isMultiConfig}>:/$<CONFIG>>/${plugin_NAME}")
  set(module "${folder}/64/lin.vyp")
  if(plugin_OUTPUT)
    set(module "${plugin_OUTPUT}")
  endif()
  cmake_path(GET module PARENT_PATH moduleFolder)
  cmake_path(GET module STEM LAST_ONLY stem)

  add_library(${target} MODULE ${plugin_SOURCES})
  target_link_libraries(${target} PRIVATE VYRA::VYRA)
  set_target_properties(
    ${target}
    PROPERTIES PREFIX ""
               SUFFIX ".vyp"
               OUTPUT_NAME "${stem}"
               # Nothing is appended for the configuration where an expression stands in the path.
               LIBRARY_OUTPUT_DIRECTORY "${moduleFolder}$<0:>"
               C_VISIBILITY_PRESET hidden
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON)
  # Some inline functions of the standard library, std::to_string among them, have constants that GNU's
  # compiler gives to the whole process. A module with one is never closed: a reload would find its old state.
  target_compile_options(${target} PRIVATE $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
  if(NOT plugin_UNCHECKED)
    vyra_check_plugin(${target})
  endif()
  if(plugin_OUTPUT)
    return()
  endif()

  if(plugin_RESOURCES)
    list(TRANSFORM plugin_RESOURCES REPLACE "^([^/].*)" "${CMAKE_CURRENT_SOURCE_DIR}/\\1")
    # A resource that changed is copied again because it counts as something to link.
    set_property(TARGET ${target} PROPERTY LINK_DEPENDS ${plugin_RESOURCES})
    add_custom_command(
      TARGET ${target} POST_BUILD
      COMMAND "${CMAKE_COMMAND}" -E copy_if_different ${plugin_RESOURCES} "${folder}"
      VERBATIM)
  endif()
  if(NOT plugin_DESTINATION)
    set(plugin_DESTINATION Resources/plugins)
  endif()
  install(TARGETS ${target} LIBRARY DESTINATION "${plugin_DESTINATION}/${plugin_NAME}/64")
  install(FILES ${plugin_RESOURCES} DESTINATION "${plugin_DESTINATION}/${plugin_NAME}")
endfunction()

# What vyra_add_plugin() has checked when a module is linked.
function(vyra_check_plugin target)
  # Of clang's sanitizers the runtime stands in the program alone, so that a module has open ends.
  set(allFlags "${CMAKE_C_FLAGS} ${CMAKE_CXX_FLAGS} ${CMAKE_MODULE_LINKER_FLAGS}")
  if(NOT (allFlags MATCHES "-fsanitize=" AND "${CMAKE_C_COMPILER_ID}${CMAKE_CXX_COMPILER_ID}" MATCHES "Clang"))
    target_link_options(${target} PRIVATE "LINKER:-z,defs")
  endif()
  add_custom_command(
    TARGET ${target} POST_BUILD
    COMMAND "${CMAKE_COMMAND}" "-DMODULE=$<TARGET_FILE:${target}>" "-DNM=${CMAKE_NM}" -P
            "${VYRA_CMAKE_FOLDER}/VYRACheckModule.cmake"
    VERBATIM)
endfunction()
