# Finds Triangle, the two-dimensional mesh generator, which brings no package file. Defines Triangle_FOUND and the target
# Triangle::Triangle. The static library is preferred, so that who uses Ormelle needs nothing of it.
find_path(TRIANGLE_INCLUDE_DIR triangle.h)
find_library(TRIANGLE_LIBRARY NAMES ${CMAKE_STATIC_LIBRARY_PREFIX}triangle${CMAKE_STATIC_LIBRARY_SUFFIX} triangle)
mark_as_advanced(TRIANGLE_INCLUDE_DIR TRIANGLE_LIBRARY)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Triangle REQUIRED_VARS TRIANGLE_LIBRARY TRIANGLE_INCLUDE_DIR)

if(Triangle_FOUND AND NOT TARGET Triangle::Triangle)
  add_library(Triangle::Triangle UNKNOWN IMPORTED)
  set_target_properties(Triangle::Triangle PROPERTIES
    IMPORTED_LOCATION ${TRIANGLE_LIBRARY} INTERFACE_INCLUDE_DIRECTORIES ${TRIANGLE_INCLUDE_DIR})
endif()
