# Read by cpack once for each package: the components that go into it.
list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build)
if(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(parts program documents system debian)
else()
    set(parts program documents portable)
endif()

set(CPACK_INSTALL_CMAKE_PROJECTS)
foreach(part ${parts})
    list(APPEND CPACK_INSTALL_CMAKE_PROJECTS "${build}" boreforge ${part} /)
endforeach()
