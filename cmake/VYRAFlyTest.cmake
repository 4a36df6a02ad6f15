# One flight of vyra_add_flight_test(), which says what the variables mean. The simulator folder is made anew, so
# that a flight finds nothing of the one before.
cmake_minimum_required(VERSION 3.25)

set(system "${FOLDER}/skyvora")
set(plugins "${system}/Resources/plugins")
file(REMOVE_RECURSE "${FOLDER}")
file(MAKE_DIRECTORY "${plugins}")
if(SYSTEM)
  file(COPY "${SYSTEM}/" DESTINATION "${system}")
endif()
foreach(module IN LISTS MODULES)
  if(module MATCHES "^(.+)/64/lin\\.vyp$")
    file(COPY "${CMAKE_MATCH_1}" DESTINATION "${plugins}")
  else()
    file(COPY "${module}" DESTINATION "${plugins}")
  endif()
endforeach()

# What the flight file says is left to it, unless the test says otherwise.
file(READ "${FLIGHT}" text)
foreach(option IN ITEMS "frames;FRAMES;600" "rate;RATE;60")
  list(GET option 0 key)
  list(GET option 1 variable)
  list(GET option 2 otherwise)
  string(JSON said ERROR_VARIABLE isMissing GET "${text}" ${key})
  if(${variable})
    list(APPEND ARGUMENTS --${key} "${${variable}}")
  elseif(isMissing)
    list(APPEND ARGUMENTS --${key} ${otherwise})
  endif()
endforeach()

execute_process(
  COMMAND "${SIMULATOR}" run --system "${system}" --flight "${FLIGHT}" --log
          "${FOLDER}/log.txt" --report "${FOLDER}/report.json" --junit "${FOLDER}/junit.xml" --state "" ${ARGUMENTS}
  WORKING_DIRECTORY "${FOLDER}"
  RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The flight ended with ${result}. Its log is ${FOLDER}/log.txt.")
endif()
