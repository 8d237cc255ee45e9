# Run by CPack once everything is in its staging folder.
set(staged "${CPACK_TEMPORARY_DIRECTORY}")
file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE "${staged}" "${staged}/*")
list(SORT files)
execute_process(
  COMMAND "${CMAKE_COMMAND}" -E tar cf "${CPACK_PACKAGE_DIRECTORY}/${CPACK_PACKAGE_FILE_NAME}.zip"
    --format=zip -- ${files}
  WORKING_DIRECTORY "${staged}" COMMAND_ERROR_IS_FATAL ANY)
