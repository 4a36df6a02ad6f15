# cmake -DMODULE=<file> -DNM=<program> -P VYRACheckModule.cmake
#
# Fails, and removes the module, when it does not export VyPluginStart as simulators look for it.
execute_process(COMMAND "${NM}" -D --defined-only "${MODULE}" OUTPUT_VARIABLE exported COMMAND_ERROR_IS_FATAL ANY)
if(exported MATCHES " [TWi] VyPluginStart[\n@]")
  return()
endif()

execute_process(COMMAND "${NM}" --defined-only "${MODULE}" OUTPUT_VARIABLE symbols ERROR_QUIET)
set(cause "there is no such function in it")
if("${exported}${symbols}" MATCHES " [TtWw] _Z[A-Za-z]*[0-9]+VyPluginStart")
  set(cause "it has a C++ name; include VYRAPlugin.h where it is defined, and do not put it in a namespace")
elseif(symbols MATCHES " [Tt] VyPluginStart\n")
  set(cause "it is hidden; include VYRAPlugin.h where it is defined, and do not make it static")
endif()
file(REMOVE "${MODULE}")
message(FATAL_ERROR "${MODULE} would not be loaded: it exports no VyPluginStart: ${cause}.")
