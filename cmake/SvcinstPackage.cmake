# What is in the zip for people who only use the tool, besides what app/ installs; scripts/build-windows packs it.
install(FILES CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
# Where the pages, log.h and the list of changes look for each other.
install(FILES docs/windows.md docs/command-line.md docs/grammar-notation.md
        DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs")
install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DOCDIR}")
