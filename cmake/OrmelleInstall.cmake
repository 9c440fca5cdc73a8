# What `cmake --install` puts in place: the library and its headers, the package files for CMake and pkg-config, the
# tool, and the licence. The result may be moved as a whole.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Ormelle)

install(TARGETS Ormelle EXPORT OrmelleTargets LIBRARY COMPONENT library NAMELINK_COMPONENT dev)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/Ormelle DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev
        FILES_MATCHING PATTERN "*.h")
install(EXPORT OrmelleTargets NAMESPACE Ormelle:: DESTINATION ${package_dir} COMPONENT dev)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/OrmelleConfig.cmake.in
  ${PROJECT_BINARY_DIR}/OrmelleConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/OrmelleConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/OrmelleConfig.cmake ${PROJECT_BINARY_DIR}/OrmelleConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT dev)

# The prefix in ormelle.pc follows from where that file lies.
set(pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH ORMELLE_PC_PREFIX ${CMAKE_INSTALL_PREFIX}/${pkgconfig_dir} ${CMAKE_INSTALL_PREFIX})
string(REGEX REPLACE "/$" "" ORMELLE_PC_PREFIX "${ORMELLE_PC_PREFIX}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/ormelle.pc.in ${PROJECT_BINARY_DIR}/ormelle.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/ormelle.pc DESTINATION ${pkgconfig_dir} COMPONENT dev)

# (Packages have their own.)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE ${PROJECT_SOURCE_DIR}/README.md ${PROJECT_SOURCE_DIR}/CHANGELOG.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)

if(TARGET ormelle_tool)
  install(TARGETS ormelle_tool COMPONENT tool)
  file(RELATIVE_PATH library_dir ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(ormelle_tool PROPERTIES INSTALL_RPATH "$ORIGIN/${library_dir}")
endif()
# What only the tool starts.
foreach(program ormelle_import ormelle_view)
  if(TARGET ${program})
    set(program_dir ${CMAKE_INSTALL_LIBEXECDIR}/ormelle)
    install(TARGETS ${program} DESTINATION ${program_dir} COMPONENT tool)
    file(RELATIVE_PATH library_dir ${CMAKE_INSTALL_FULL_LIBEXECDIR}/ormelle ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(${program} PROPERTIES INSTALL_RPATH "$ORIGIN/${library_dir}")
  endif()
endforeach()

# The manual page is what the tool says itself.
find_program(ORMELLE_AWK NAMES awk gawk mawk)
find_program(ORMELLE_GZIP gzip)
if(TARGET ormelle_tool AND ORMELLE_AWK AND ORMELLE_GZIP AND NOT ORMELLE_SANITIZE AND NOT CMAKE_CROSSCOMPILING)
  set(page ${PROJECT_BINARY_DIR}/man/ormelle.1.gz)
  set(awk ${PROJECT_SOURCE_DIR}/tool/man_page.awk)
  set(programs -DTOOL=$<TARGET_FILE:ormelle_tool>)
  if(TARGET ormelle_view)
    list(APPEND programs -DVIEW=$<TARGET_FILE:ormelle_view>)
  endif()
  add_custom_command(OUTPUT ${page}
    COMMAND ${CMAKE_COMMAND} ${programs} -DAWK=${ORMELLE_AWK} -DGZIP=${ORMELLE_GZIP} -DPROGRAM=${awk} -DPAGE=${page}
      -DVERSION=${PROJECT_VERSION} -P ${PROJECT_SOURCE_DIR}/cmake/ManPage.cmake
    DEPENDS ${awk} ${PROJECT_SOURCE_DIR}/cmake/ManPage.cmake ormelle_programs VERBATIM)
  add_custom_target(ormelle_man_page ALL DEPENDS ${page})
  install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
endif()
