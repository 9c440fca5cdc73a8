# What `cpack` makes in the build folder of the preset `package`: a Debian package each of the library, of what programs are
# built with, of the tool with the programs that it starts, and of the Python module where that is built.
set(CPACK_PACKAGE_NAME ormelle)
set(CPACK_PACKAGE_VENDOR "Ormelle")
set(CPACK_PACKAGE_CONTACT "Ormelle maintainers <maintainers@ormelle.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # a package has its own
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL library dev)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SOURCE ormelle)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(control_dir ${PROJECT_BINARY_DIR}/package)

# With Triangle in it, the library isn't free any more, and what depends on it isn't quite.
file(READ ${PROJECT_SOURCE_DIR}/LICENSE copyright)
set(library_area)
set(area)
if(TARGET Triangle::Triangle)
  set(library_area non-free/)
  set(area contrib/)
  string(APPEND copyright "
The library contains Triangle, Copyright 1993, 1995, 1997, 1998, 2002, 2005 Jonathan Richard Shewchuk. Triangle is free
for private, research and institutional use and may be passed on unpaid. To be sold as a part of a product it needs an
arrangement with its author: https://www.cs.cmu.edu/~quake/triangle.html
")
endif()
file(WRITE ${control_dir}/copyright "${copyright}")

# The changes of the project, and those of the packages, which follow it.
set(version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
file(WRITE ${control_dir}/changelog.Debian "ormelle (${version}) unstable; urgency=medium

  * Packages of Ormelle ${PROJECT_VERSION}.

 -- ${CPACK_PACKAGE_CONTACT}  ${date}
")
configure_file(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${control_dir}/changelog COPYONLY)
execute_process(COMMAND gzip -9nf changelog changelog.Debian WORKING_DIRECTORY ${control_dir})

set(library libormelle${PROJECT_VERSION_MAJOR})
set(same "${library} (= ${version})")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_LIBRARY_PACKAGE_SECTION ${library_area}libs)
# Written here, since CPack takes what of Python is loaded for libraries, too.
file(WRITE ${control_dir}/library/shlibs "libOrmelle ${PROJECT_VERSION_MAJOR} ${library} (>= ${PROJECT_VERSION})\n")
file(WRITE ${control_dir}/library/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA "${control_dir}/library/shlibs;${control_dir}/library/triggers")
set(CPACK_COMPONENT_LIBRARY_DESCRIPTION "${PROJECT_DESCRIPTION} - library
Ormelle turns meshes of numbers into nodes of the scene graph: coloured
surfaces, isolines, volumes, vectors, axes, curves, charts and legends.
.
This package has the shared library.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libormelle-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION ${area}libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "${same}, libcoin-dev")
set(CPACK_COMPONENT_DEV_DESCRIPTION "${PROJECT_DESCRIPTION} - development
This package has the headers of Ormelle and its package files for CMake and
pkg-config.")

# The renderer, and what texts are made with, are opened while a picture is drawn.
set(drawing "${same}, libegl1, libgl1-mesa-dri, libfreetype6, libfontconfig1, libglu1-mesa")
if(TARGET ormelle_tool)
  list(APPEND CPACK_COMPONENTS_ALL tool)
  set(CPACK_DEBIAN_TOOL_PACKAGE_NAME ormelle-tools)
  set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION ${area}science)
  set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${drawing}")
  set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS fonts-dejavu-core)
  set(CPACK_COMPONENT_TOOL_DESCRIPTION "${PROJECT_DESCRIPTION} - tool
The command-line tool ormelle draws scenes and data files into pictures, with
or without a display, shows them in a window, and converts files of other
programs into scenes and scenes into models.")
endif()
if(TARGET ormelle_python)
  list(APPEND CPACK_COMPONENTS_ALL python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_NAME python3-ormelle)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_SECTION ${area}python)
  # The module is for one minor version of Python.
  execute_process(COMMAND ${ORMELLE_PYTHON_EXECUTABLE} -c "import sys
m, n = sys.version_info[:2]
print(f'python3 (>= {m}.{n}), python3 (<< {m}.{n + 1})', end='')" OUTPUT_VARIABLE python)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "${drawing}, ${python}, python3-numpy, python3-pivy")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS fonts-dejavu-core)
  # What Python compiles when the module is used has to go with it.
  file(WRITE ${control_dir}/python/postinst "#!/bin/sh\nset -e\nif [ \"$1\" = configure ]; then py3compile -p python3-ormelle; fi\n")
  file(WRITE ${control_dir}/python/prerm "#!/bin/sh\nset -e\npy3clean -p python3-ormelle\n")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA "${control_dir}/python/postinst;${control_dir}/python/prerm")
  set(CPACK_COMPONENT_PYTHON_DESCRIPTION "${PROJECT_DESCRIPTION} - Python module
This package has the Python module ormelle, which works together with Pivy and
NumPy.")
endif()
foreach(component ${CPACK_COMPONENTS_ALL})
  string(TOUPPER ${component} upper)
  install(FILES ${control_dir}/copyright ${control_dir}/changelog.gz ${control_dir}/changelog.Debian.gz COMPONENT ${component}
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
endforeach()
include(CPack)
