# CPack writes entries as the folder lists them, with the builder's number and the time of reading.
execute_process(COMMAND python3 ${CMAKE_CURRENT_LIST_DIR}/normalise-zip ${CPACK_PACKAGE_FILES} COMMAND_ERROR_IS_FATAL ANY)
