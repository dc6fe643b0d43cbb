# Cross-building for Windows with the packages g++-mingw-w64-x86-64-posix and binutils-mingw-w64-x86-64. The window is
# built, too, if tools/qt-for-windows has built Qt.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
get_filename_component(project ${CMAKE_CURRENT_LIST_DIR} DIRECTORY)
set(qt ${project}/build/qt-windows)
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${qt})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Qt's tools, such as rcc, run on this machine.
set(QT_HOST_PATH /usr)
set(QT_HOST_PATH_CMAKE_DIR /usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/cmake)
set(BOREFORGE_VIEW OFF CACHE BOOL "The viewer isn't built for Windows" FORCE)
set(with_window OFF)
if(EXISTS ${qt}/stamp)
    set(with_window ON)
endif()
set(BOREFORGE_UI ${with_window} CACHE BOOL "With Qt for Windows alone" FORCE)
