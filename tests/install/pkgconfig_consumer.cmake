# Builds SOURCE with what pkg-config says about the tree installed in PREFIX, and runs it.
find_package(PkgConfig REQUIRED)
set(ENV{PKG_CONFIG_PATH} ${PREFIX}/${LIBDIR}/pkgconfig)

execute_process(COMMAND ${PKG_CONFIG_EXECUTABLE} --modversion ormelle
                OUTPUT_VARIABLE found OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
if(NOT found STREQUAL VERSION)
  message(FATAL_ERROR "ormelle.pc gives version '${found}', not ${VERSION}")
endif()

execute_process(COMMAND ${PKG_CONFIG_EXECUTABLE} --cflags --libs ormelle
                OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
separate_arguments(flags UNIX_COMMAND "${flags}")
execute_process(COMMAND ${CXX} -std=c++17 ${SOURCE} ${flags} -Wl,-rpath,${PREFIX}/${LIBDIR} -o ${PROGRAM}
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${PROGRAM} ${VERSION} COMMAND_ERROR_IS_FATAL ANY)
