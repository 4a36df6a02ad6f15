# vyra_add_plugin(<target> SOURCES <file>... OUTPUT <file>)
#
# Builds a plugin module, linked against libVYRA.so.2, as the file OUTPUT, which ends in ".vyp". A plugin
# folder holds its module at 64/lin.vyp; a loose module lies beside the folders under its own name:
#
#   vyra_add_plugin(fuel SOURCES fuel.c OUTPUT "${root}/Resources/plugins/fuel/64/lin.vyp")
#   vyra_add_plugin(hello SOURCES hello.c OUTPUT "${root}/Resources/plugins/hello.vyp")
function(vyra_add_plugin target)
  cmake_parse_arguments(PARSE_ARGV 1 plugin "" "OUTPUT" "SOURCES")
  if(NOT plugin_SOURCES OR NOT plugin_OUTPUT MATCHES "\\.vyp$")
    message(FATAL_ERROR "vyra_add_plugin(${target}) needs SOURCES and an OUTPUT that ends in .vyp.")
  endif()
  cmake_path(GET plugin_OUTPUT PARENT_PATH folder)
  cmake_path(GET plugin_OUTPUT STEM stem)
  add_library(${target} MODULE ${plugin_SOURCES})
  target_link_libraries(${target} PRIVATE VYRA::VYRA)
  set_target_properties(
    ${target}
    PROPERTIES PREFIX ""
               SUFFIX ".vyp"
               OUTPUT_NAME "${stem}"
               LIBRARY_OUTPUT_DIRECTORY "${folder}"
               C_VISIBILITY_PRESET hidden
               CXX_VISIBILITY_PRESET hidden
               VISIBILITY_INLINES_HIDDEN ON)
endfunction()
