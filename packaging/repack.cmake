# Run by cpack after packing. It takes the files of an archive as the folder lists them, with the builder's
# number; here they come by name and belong to root, so that the same tree gives the same archive.
if(CPACK_GENERATOR STREQUAL "TGZ")
    cmake_path(GET CPACK_TEMPORARY_INSTALL_DIRECTORY PARENT_PATH above)
    cmake_path(GET CPACK_TEMPORARY_INSTALL_DIRECTORY FILENAME folder)
    execute_process(
        COMMAND tar --sort=name --owner=root:0 --group=root:0 --format=gnu -C ${above} -c ${folder}
        COMMAND gzip -9n
        OUTPUT_FILE ${CPACK_PACKAGE_FILES} COMMAND_ERROR_IS_FATAL ANY)
endif()
