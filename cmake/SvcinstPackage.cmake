# What is installed beside the tool and its header, and so in the zip that scripts/build-windows packs. The pages,
# log.h and the list of changes look for each other there.
install(FILES CHANGELOG.md LICENSE DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(FILES docs/command-line.md docs/format-strings.md docs/grammar-notation.md docs/windows.md
        DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs")
install(DIRECTORY examples DESTINATION "${CMAKE_INSTALL_DOCDIR}")
if(WIN32)
  install(FILES platform/windows/resources/README.txt DESTINATION "${CMAKE_INSTALL_DOCDIR}")
endif()
