# What `cpack` makes: a Debian package each of the library, of what programs are built with, of the tool with the programs
# that it starts, and of the Python module where that is built.
set(CPACK_PACKAGE_NAME ormelle)
set(CPACK_PACKAGE_VENDOR "Ormelle")
set(CPACK_PACKAGE_CONTACT "Ormelle maintainers <maintainers@ormelle.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL library dev)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

# With Triangle in it, the library isn't free any more, and what depends on it isn't quite.
set(copyright ${PROJECT_SOURCE_DIR}/LICENSE)
set(library_area)
set(area)
if(TARGET Triangle::Triangle)
  set(library_area non-free/)
  set(area contrib/)
  file(READ ${PROJECT_SOURCE_DIR}/LICENSE licence)
  set(copyright ${PROJECT_BINARY_DIR}/copyright)
  file(WRITE ${copyright} "${licence}
The library contains Triangle, Copyright 1993, 1995, 1997, 1998, 2002, 2005 Jonathan Richard Shewchuk. Triangle is free
for private, research and institutional use and may be passed on unpaid. To be sold as a part of a product it needs an
arrangement with its author: https://www.cs.cmu.edu/~quake/triangle.html
")
endif()

set(library libormelle${PROJECT_VERSION_MAJOR})
set(same "${library} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION ${library_area}libs)
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "This package has the shared library.")
set(CPACK_DEBIAN_DEV_PACKAGE_NAME libormelle-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION ${area}libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${same}, libcoin-dev")
set(CPACK_COMPONENT_DEV_DESCRIPTION "This package has the headers and the package files of CMake and pkg-config.")
if(TARGET ormelle_tool)
  list(APPEND CPACK_COMPONENTS_ALL tool)
  set(CPACK_DEBIAN_TOOL_PACKAGE_NAME ormelle-tools)
  set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION ${area}science)
  # Fonts and the software renderer are opened while the tool runs.
  set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${same}, libegl1, libgl1-mesa-dri, libfreetype6, libfontconfig1")
  set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS fonts-dejavu-core)
  set(CPACK_COMPONENT_TOOL_DESCRIPTION "This package has the command-line tool ormelle, its viewer and what imports files of other programs.")
endif()
if(TARGET ormelle_python)
  list(APPEND CPACK_COMPONENTS_ALL python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-ormelle)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION ${area}python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "${same}, python3, python3-numpy, python3-pivy, libegl1, libgl1-mesa-dri")
  set(CPACK_COMPONENT_PYTHON_DESCRIPTION "This package has the Python module ormelle.")
endif()
foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} upper)
  install(FILES ${copyright} RENAME copyright COMPONENT ${component}
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
endforeach()
include(CPack)
