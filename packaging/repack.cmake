# Run by cpack after packing. cpack archives files in directory order and with the builder's user id; this
# packs them again, sorted by name and owned by root, so that the same tree makes the same archive.
if(CPACK_GENERATOR STREQUAL "TGZ")
    cmake_path(GET CPACK_TEMPORARY_INSTALL_DIRECTORY PARENT_PATH above)
    cmake_path(GET CPACK_TEMPORARY_INSTALL_DIRECTORY FILENAME folder)
    execute_process(
        COMMAND tar --sort=name --owner=root:0 --group=root:0 --format=gnu -C ${above} -c ${folder}
        COMMAND gzip -9n
        OUTPUT_FILE ${CPACK_PACKAGE_FILES} COMMAND_ERROR_IS_FATAL ANY)
endif()
