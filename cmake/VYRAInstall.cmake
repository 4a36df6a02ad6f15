# What `cmake --install` puts below the prefix: the library, its headers, vyra-sim, a plugin to begin with, the
# guides, and the files by which other projects find them (find_package(VYRA) and pkg-config). The components are
# the packages that cmake/VYRAPackages.cmake makes: library, development and simulator.
include(CMakePackageConfigHelpers)

set(packageFolder "${CMAKE_INSTALL_LIBDIR}/cmake/VYRA")

install(
  TARGETS VYRA
  EXPORT VYRATargets
  LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
          COMPONENT library
          NAMELINK_COMPONENT development)
install(
  DIRECTORY "${PROJECT_SOURCE_DIR}/include/"
  DESTINATION "${CMAKE_INSTALL_INCLUDEDIR}/vyra"
  COMPONENT development
  FILES_MATCHING
  PATTERN "*.h")
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" DESTINATION "${CMAKE_INSTALL_DOCDIR}" COMPONENT licence)
install(DIRECTORY "${PROJECT_SOURCE_DIR}/template" DESTINATION "${CMAKE_INSTALL_DATADIR}/vyra" COMPONENT development)
# The guides lie beside the example plugins as they do here, so that their links hold.
install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" "${PROJECT_SOURCE_DIR}/plugins"
        DESTINATION "${CMAKE_INSTALL_DOCDIR}"
        COMPONENT development
        PATTERN pictures EXCLUDE
        PATTERN CMakeLists.txt EXCLUDE)

if(VYRA_BUILD_SIMULATOR)
  # Found beside the library wherever the prefix is moved to.
  file(RELATIVE_PATH libraryFromPrograms "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
  set_target_properties(vyra-sim PROPERTIES INSTALL_RPATH "$ORIGIN/${libraryFromPrograms}")
  install(
    TARGETS vyra-sim
    EXPORT VYRASimulatorTargets
    RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT simulator)
  install(
    FILES "${CMAKE_BINARY_DIR}/sim/flight.schema.json" "${PROJECT_SOURCE_DIR}/docs/report.schema.json"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/vyra"
    COMPONENT simulator)
  # Apart from the library's, so that a plugin is built where the simulator is not installed.
  install(
    EXPORT VYRASimulatorTargets
    NAMESPACE VYRA::
    DESTINATION "${packageFolder}"
    COMPONENT simulator)
endif()

install(
  EXPORT VYRATargets
  NAMESPACE VYRA::
  DESTINATION "${packageFolder}"
  COMPONENT development)
configure_package_config_file(
  "${PROJECT_SOURCE_DIR}/cmake/VYRAConfig.cmake.in" "${PROJECT_BINARY_DIR}/cmake/VYRAConfig.cmake"
  INSTALL_DESTINATION "${packageFolder}"
  NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file("${PROJECT_BINARY_DIR}/cmake/VYRAConfigVersion.cmake"
                                 COMPATIBILITY SameMajorVersion)
install(
  FILES "${PROJECT_BINARY_DIR}/cmake/VYRAConfig.cmake" "${PROJECT_BINARY_DIR}/cmake/VYRAConfigVersion.cmake"
        "${PROJECT_SOURCE_DIR}/cmake/VYRAAddFlightTest.cmake" "${PROJECT_SOURCE_DIR}/cmake/VYRAAddPlugin.cmake"
        "${PROJECT_SOURCE_DIR}/cmake/VYRACheckModule.cmake" "${PROJECT_SOURCE_DIR}/cmake/VYRAFlyTest.cmake"
  DESTINATION "${packageFolder}"
  COMPONENT development)

# vyra.pc finds its prefix from its own place, so that an installed tree can be moved.
file(RELATIVE_PATH prefixFromPkgConfig "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file("${PROJECT_SOURCE_DIR}/cmake/vyra.pc.in" "${PROJECT_BINARY_DIR}/cmake/vyra.pc" @ONLY)
install(
  FILES "${PROJECT_BINARY_DIR}/cmake/vyra.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
  COMPONENT development)
