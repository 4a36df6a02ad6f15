# vyra_compile_options: the language level, the warnings and, where a preset asks for them, the sanitizers.
# Every target of this project links it; nothing is set globally.
add_library(vyra_compile_options INTERFACE)

target_compile_features(vyra_compile_options INTERFACE c_std_99 cxx_std_20)
target_compile_options(
  vyra_compile_options
  INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
            $<$<BOOL:${VYRA_WARNINGS_AS_ERRORS}>:-Werror>)

set(VYRA_SANITIZERS "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
if(VYRA_SANITIZERS)
  set(sanitizerFlags -fsanitize=${VYRA_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(vyra_compile_options INTERFACE ${sanitizerFlags})
  target_link_options(vyra_compile_options INTERFACE ${sanitizerFlags})
  # A sanitizer sees what becomes of records only when each is an allocation of its own.
  target_compile_definitions(vyra_compile_options INTERFACE VYRA_RECORDS_FROM_HEAP)
endif()

# Checks of iterators and indices in the standard library's containers, which then are other types: libraries
# that share such types with this project must be built with them, too. See tests/CMakeLists.txt.
option(VYRA_STD_DEBUG "Build with the checks of the standard library's debug mode" OFF)
if(VYRA_STD_DEBUG)
  target_compile_definitions(vyra_compile_options INTERFACE _GLIBCXX_DEBUG)
endif()

# For what the Debian packages hold alone, so that lines of it have names in backtraces.
set(VYRA_SHIPPED_OPTIONS "" CACHE STRING "Compiler options for the library and vyra-sim alone")
add_library(vyra_shipped_options INTERFACE)
target_compile_options(vyra_shipped_options INTERFACE ${VYRA_SHIPPED_OPTIONS})
