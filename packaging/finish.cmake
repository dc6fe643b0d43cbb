# Run by cpack on the folder of a package before it is packed.
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY})

if(CPACK_GENERATOR STREQUAL "DEB")
    set(documents ${root}/usr/${CPACK_BOREFORGE_DOCUMENTS})
    if(EXISTS ${documents}/CHANGELOG.md)
        file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
    endif()
    file(GLOB texts ${root}/usr/share/man/man1/* ${root}/usr/share/doc/*/changelog*)
    execute_process(COMMAND gzip -9n ${texts} COMMAND_ERROR_IS_FATAL ANY)
else()
    # An archive to unpack anywhere has everything at its top.
    file(GLOB contents ${root}/${CPACK_BOREFORGE_HOME}/* ${root}/${CPACK_BOREFORGE_DOCUMENTS}/*)
    file(COPY ${contents} DESTINATION ${root})
    foreach(folder ${CPACK_BOREFORGE_HOME} ${CPACK_BOREFORGE_DOCUMENTS})
        string(REGEX REPLACE "/.*" "" top ${folder})
        file(REMOVE_RECURSE ${root}/${top})
    endforeach()
endif()

# One date for everything, so that the same tree makes the same packages.
execute_process(COMMAND find ${root} -exec touch -h -d @$ENV{SOURCE_DATE_EPOCH} {} +
    COMMAND_ERROR_IS_FATAL ANY)
