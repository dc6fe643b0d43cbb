# Run by cpack on the folder of a package before it is packed.
set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY})

if(CPACK_GENERATOR STREQUAL "DEB")
    # The commands. The program sees through the link and finds its folders under /opt.
    file(GLOB programs RELATIVE ${root}/opt/boreforge ${root}/opt/boreforge/boreforge*)
    file(MAKE_DIRECTORY ${root}/usr/bin)
    foreach(program ${programs})
        file(CREATE_LINK /opt/boreforge/${program} ${root}/usr/bin/${program} SYMBOLIC)
    endforeach()
    file(RENAME ${root}/usr/share/doc/boreforge/CHANGELOG.md ${root}/usr/share/doc/boreforge/changelog)
    file(GLOB texts ${root}/usr/share/man/man1/* ${root}/usr/share/doc/boreforge/changelog*)
    execute_process(COMMAND gzip -9n ${texts} COMMAND_ERROR_IS_FATAL ANY)
endif()

# One date for everything, so that the same tree gives the same packages.
execute_process(COMMAND find ${root} -exec touch -h -d @$ENV{SOURCE_DATE_EPOCH} {} +
    COMMAND_ERROR_IS_FATAL ANY)
