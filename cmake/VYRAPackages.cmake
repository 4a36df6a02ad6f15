# The Debian packages, a component of the installation each, which `cpack` makes of a build of the preset
# "package"; scripts/package calls it.
#
#   libvyra2     what a simulator needs to run
#   libvyra-dev  what is needed to build plugins and simulators, with the guides and a plugin to begin with
#   vyra-sim     the reference simulator
#
# and for the first and the last a package with the debug information that is taken out of them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vyra)
# CMake's own default, which keeps the descriptions below from getting another first line.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_NAME} built using CMake")
set(CPACK_PACKAGE_CONTACT "The VYRA authors <vyra@skyvora.org>")
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_SOURCE_DIR}/build/packages")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL library development simulator)
set(CPACK_COMPONENTS_GROUPING IGNORE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(debianVersion "${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libvyra${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION
    "plugin manager of the flight simulator Skyvora
VYRA finds, starts, calls, reloads and stops the plugins of a simulator, and
lets them publish and read its data.
.
This package holds the shared library, which simulators load.")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_LIBRARY_DEBUGINFO_PACKAGE ON)
file(WRITE "${PROJECT_BINARY_DIR}/debian/triggers" "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${PROJECT_BINARY_DIR}/debian/triggers")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libvyra-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
    "headers, guides and a template for plugins of the simulator Skyvora
VYRA finds, starts, calls, reloads and stops the plugins of a simulator, and
lets them publish and read its data.
.
This package holds what is needed to build plugins and simulators: the headers,
files for CMake and pkg-config, the guides, and in /usr/share/vyra/template a
plugin to begin with, in C and in C++.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "libvyra${PROJECT_VERSION_MAJOR} (= ${debianVersion})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "vyra-sim")

set(CPACK_DEBIAN_SIMULATOR_PACKAGE_NAME vyra-sim)
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_SECTION devel)
set(CPACK_COMPONENT_SIMULATOR_DESCRIPTION
    "reference simulator for plugins of the simulator Skyvora
vyra-sim flies plugins without a window, checks what a flight file expects of
them, and tells what they cost and which of them a crash or a stall is of.")
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS "${CMAKE_LIBRARY_OUTPUT_DIRECTORY}")
# The library's name in the list is one that dpkg-shlibdeps cannot know of yet, and fonts are no library.
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_DEPENDS
    "libvyra${PROJECT_VERSION_MAJOR} (= ${debianVersion}), fonts-dejavu-core")
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_RECOMMENDS "libegl1, libegl-mesa0, libgl1-mesa-dri")
set(CPACK_DEBIAN_SIMULATOR_DEBUGINFO_PACKAGE ON)

# What Debian wants to find in each package: whose work it is, and what changed. The time is that of the last
# change (SOURCE_DATE_EPOCH), so that the same sources give the same packages.
string(TIMESTAMP changeTime "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(READ "${PROJECT_SOURCE_DIR}/LICENSE" licence)
string(REGEX REPLACE "^MIT License\n\n(Copyright[^\n]*)\n\n" "" licence "${licence}")
string(REGEX REPLACE "\n\n" "\n.\n" licence "${licence}")
string(STRIP "${licence}" licence)
string(REPLACE "\n" "\n " licence "${licence}")
set(debianFolder "${PROJECT_BINARY_DIR}/debian")
configure_file("${PROJECT_SOURCE_DIR}/cmake/debian-copyright.in" "${debianFolder}/copyright" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/cmake/debian-changelog.in" "${debianFolder}/changelog.Debian" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/CHANGELOG.md" "${debianFolder}/changelog" COPYONLY)
find_program(VYRA_GZIP gzip REQUIRED)
foreach(changelog IN ITEMS changelog changelog.Debian)
  execute_process(COMMAND "${VYRA_GZIP}" --best --no-name --force "${debianFolder}/${changelog}"
                  COMMAND_ERROR_IS_FATAL ANY)
endforeach()
# What lintian would warn of, with the reasons.
file(WRITE "${debianFolder}/overrides" "# Made by the project itself: no bug of Debian asks for it.\n"
                                       "initial-upload-closes-no-bugs\n")
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  string(TOUPPER "${component}" name)
  install(
    FILES "${debianFolder}/copyright" "${debianFolder}/changelog.gz" "${debianFolder}/changelog.Debian.gz"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${name}_PACKAGE_NAME}"
    COMPONENT ${component})
  set(overrides "${debianFolder}/${component}-overrides")
  configure_file("${debianFolder}/overrides" "${overrides}" COPYONLY)
  if(component STREQUAL simulator)
    file(APPEND "${overrides}" "# vyra-sim --help and the guides in libvyra-dev say what a page would.\n"
                               "no-manual-page\n")
  endif()
  install(
    FILES "${overrides}"
    DESTINATION "${CMAKE_INSTALL_DATADIR}/lintian/overrides"
    RENAME "${CPACK_DEBIAN_${name}_PACKAGE_NAME}"
    COMPONENT ${component})
endforeach()

include(CPack)
