# The Debian packages that cpack makes of an installation, one a component; see ./dev package.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME ormelle)
set(CPACK_PACKAGE_VENDOR Ormelle)
set(CPACK_PACKAGE_CONTACT "The developers of Ormelle <developers@ormelle.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/lib)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY =)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)

set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME libormelle${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEV_PACKAGE_NAME libormelle-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libcoin-dev, libtbb-dev")
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME ormelle-tools)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION science)
set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "libegl1, libgl1-mesa-dri, fonts-dejavu-core")
set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-ormelle)
set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION python)
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "python3, python3-numpy, python3-pivy, libegl1, libgl1-mesa-dri")

# Only what was built.
set(CPACK_COMPONENTS_ALL library dev)
if(TARGET ormelle_tool)
  list(APPEND CPACK_COMPONENTS_ALL tool)
endif()
if(TARGET ormelle_python)
  list(APPEND CPACK_COMPONENTS_ALL python)
endif()

include(CPack)
cpack_add_component(library DESCRIPTION "The shared library of Ormelle, for the Coin scene graph.")
cpack_add_component(dev DEPENDS library
  DESCRIPTION "Headers of Ormelle, and what CMake and pkg-config need to find it.")
cpack_add_component(tool DEPENDS library
  DESCRIPTION "The command ormelle: draws scenes of Ormelle, shows them in a window, and converts data of other programs.")
cpack_add_component(python DEPENDS library
  DESCRIPTION "The Python module ormelle, which works with Pivy and NumPy.")
