# Installs the build BUILD into the empty folder FIRST, and then moves it to MOVED.
file(REMOVE_RECURSE ${FIRST} ${MOVED})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${FIRST}
                OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(RENAME ${FIRST} ${MOVED})
