# Read by cpack once for each package: the components that go into it.
list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build)
if(CPACK_BOREFORGE_PACKAGE STREQUAL "viewer")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(parts viewer viewer_system)
    set(CPACK_PACKAGE_NAME boreforge-view)
    set(CPACK_DEBIAN_PACKAGE_NAME boreforge-view)
    set(CPACK_DEBIAN_PACKAGE_DEPENDS "qml6-module-quick3d, qml6-module-qtquick, qml6-module-qtquick-window, \
qml6-module-qtqml-workerscript, libgl1-mesa-dri")
    set(CPACK_DEBIAN_PACKAGE_SUGGESTS "boreforge, xvfb")
    set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "viewer of tunnels for the tracks of Zephyrail")
    set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Shows a finished tunnel in a window, rides along its track, and shows new
exports as they come. Walls that face the wrong way are red. It also saves
pictures.")
elseif(CPACK_GENERATOR STREQUAL "DEB")
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(parts program documents system debian)
else()
    set(parts program ${CPACK_BOREFORGE_VIEWER} documents portable)
endif()

set(CPACK_INSTALL_CMAKE_PROJECTS)
foreach(part ${parts})
    list(APPEND CPACK_INSTALL_CMAKE_PROJECTS "${build}" boreforge ${part} /)
endforeach()
