# Runs what was built under Wine, in a prefix of the build folder's own.
set(CMAKE_CROSSCOMPILING_EMULATOR "${CMAKE_CURRENT_LIST_DIR}/../wine-run;${CMAKE_BINARY_DIR}/wine")
