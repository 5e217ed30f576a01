# For the package, where the headers lie elsewhere than in the source tree: points the links of the
# pages in FOLDER to them. HEADERS is the headers' folder, seen from FOLDER.
file(GLOB_RECURSE pages RELATIVE ${FOLDER} ${FOLDER}/*.md)
foreach(page IN LISTS pages)
  file(READ ${FOLDER}/${page} text)
  string(REGEX REPLACE "\\]\\(((\\.\\./)*)include/" "](\\1${HEADERS}/" relinked "${text}")
  if(NOT relinked STREQUAL text)
    file(WRITE ${FOLDER}/${page} "${relinked}")
  endif()
endforeach()
