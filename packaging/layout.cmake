# Read by cpack once for each package: the parts it holds, each with its folder.
list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build)
if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_PACKAGING_INSTALL_PREFIX /)
    set(parts program /opt/boreforge documents /usr/share/doc/boreforge system /usr)
else()
    set(parts program / documents / portable /)
endif()

set(CPACK_INSTALL_CMAKE_PROJECTS)
while(parts)
    list(POP_FRONT parts part folder)
    list(APPEND CPACK_INSTALL_CMAKE_PROJECTS "${build}" boreforge ${part} ${folder})
endwhile()
