# Runs vyra-sim as add_sim_test describes, and fails with what it printed where that differs.
cmake_minimum_required(VERSION 3.25)

set(logOption --log "${LOG_FILE}")
if("--log" IN_LIST ARGUMENTS)
  set(logOption "")
endif()
file(REMOVE "${LOG_FILE}")
execute_process(
  COMMAND "${PROGRAM}" run ${logOption} ${ARGUMENTS}
  RESULT_VARIABLE exit
  OUTPUT_VARIABLE output
  ERROR_VARIABLE error)
set(log "")
if(EXISTS "${LOG_FILE}")
  file(READ "${LOG_FILE}" log)
endif()

set(faults "")
if(NOT exit STREQUAL EXIT)
  string(APPEND faults "exit code ${exit}, not ${EXIT}\n")
endif()
foreach(stream IN ITEMS output error log)
  string(TOUPPER ${stream} texts)
  foreach(text IN LISTS ${texts})
    string(FIND "${${stream}}" "${text}" position)
    if(position EQUAL -1)
      string(APPEND faults "${stream} lacks: ${text}\n")
    endif()
  endforeach()
endforeach()
if(ONE_LINE AND NOT error MATCHES "^vyra-sim: [^\n]+\n$")
  string(APPEND faults "standard error is not one line of vyra-sim\n")
endif()
if(faults)
  message("---- standard output\n${output}---- standard error\n${error}---- log\n${log}----\n${faults}")
  message(FATAL_ERROR "vyra-sim did not do what was expected")
endif()
