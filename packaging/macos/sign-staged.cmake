# Run by cpack between installing and packing. KESTRELBAY_IDENTITY is in the environment, as
# packaging/macos/image sets it.
execute_process(
    COMMAND ${CMAKE_CURRENT_LIST_DIR}/sign
        ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/KestrelBay.app $ENV{KESTRELBAY_IDENTITY}
    COMMAND_ERROR_IS_FATAL ANY)
