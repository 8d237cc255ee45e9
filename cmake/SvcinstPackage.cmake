# The zip for people who only use the tool: `cpack` in the build folder. The times of its files are
# SOURCE_DATE_EPOCH where that is set, and their order does not depend on the disk.
install(FILES CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
# Where the pages, log.h and the list of changes look for each other.
install(FILES docs/windows.md docs/command-line.md docs/grammar-notation.md docs/format-strings.md
        DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs")
install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DOCDIR}")

set(CPACK_GENERATOR External)
set(CPACK_EXTERNAL_ENABLE_STAGING ON)
set(CPACK_MONOLITHIC_INSTALL ON)  # no folder a component
set(CPACK_EXTERNAL_PACKAGE_SCRIPT "${CMAKE_CURRENT_LIST_DIR}/sorted_zip.cmake")
set(CPACK_PACKAGE_FILE_NAME "svcinst-${PROJECT_VERSION}-windows-x64")
include(CPack)
