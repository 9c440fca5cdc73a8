# Target ormelle_headers compiles every public header on its own, twice in a row, as C++17: what applications may expect.
file(GLOB public_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/include/Ormelle/*.h)
set(header_sources)
foreach(header ${public_headers})
  cmake_path(GET header FILENAME name)
  set(source ${PROJECT_BINARY_DIR}/headers/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "#include <Ormelle/@name@>\n#include <Ormelle/@name@>\n" @ONLY)
  list(APPEND header_sources ${source})
endforeach()

add_library(ormelle_headers OBJECT EXCLUDE_FROM_ALL ${header_sources})
set_target_properties(ormelle_headers PROPERTIES CXX_STANDARD 17 UNITY_BUILD OFF)
target_link_libraries(ormelle_headers PRIVATE Ormelle)
