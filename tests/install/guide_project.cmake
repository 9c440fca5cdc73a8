# Makes a project of the guide: CMakeLists.txt is the first block of that kind on the page about CMake, main.cpp the
# program of the first page.
file(MAKE_DIRECTORY ${PROJECT})
execute_process(COMMAND ${AWK} "/^```cmake$/ && !seen { on = seen = 1; next } /^```$/ { on = 0 } on" ${GUIDE}/cmake.md
  OUTPUT_FILE ${PROJECT}/CMakeLists.txt COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${AWK} -f ${GUIDE}/program.awk ${GUIDE}/start.md ${GUIDE}/start.md
  OUTPUT_FILE ${PROJECT}/main.cpp COMMAND_ERROR_IS_FATAL ANY)
