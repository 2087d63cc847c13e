# Run by CPack over the files of the package before it is written: what Debian asks of documents, and
# one time stamp for all, that of the commit.
function(run)
  execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(usr "${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr")
set(documents "${usr}/share/doc/stillpost")
# This is where Debian's tools look for the licence.
file(RENAME "${documents}/LICENSE" "${documents}/copyright")
run("${CPACK_STILLPOST_SOURCE}/tools/packaging/debian-changelog" "${CPACK_PACKAGE_VERSION}"
  "${documents}/CHANGELOG.md" "${documents}/changelog")
file(GLOB_RECURSE pages "${usr}/share/man/*.1")
run(gzip -9n "${documents}/changelog" ${pages})
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  run(find "${CPACK_TEMPORARY_INSTALL_DIRECTORY}" -exec touch -h -d "@$ENV{SOURCE_DATE_EPOCH}" {} +)
endif()
