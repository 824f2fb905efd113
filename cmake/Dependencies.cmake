# Finds the libraries that the pane uses. docs/ARCHITECTURE.md gives the reason for each.

include(QtVersion)
find_package(Qt${KS7_QT_VERSION} REQUIRED COMPONENTS Core Gui Widgets DBus Svg LinguistTools)
if(KS7_BUILD_TESTS)
  find_package(Qt${KS7_QT_VERSION} REQUIRED COMPONENTS Test)
endif()

find_package(PkgConfig REQUIRED)
pkg_check_modules(PIPEWIRE REQUIRED IMPORTED_TARGET libpipewire-0.3)
pkg_check_modules(GSTREAMER REQUIRED IMPORTED_TARGET gstreamer-1.0 gstreamer-app-1.0 gstreamer-video-1.0)

find_package(KF${KS7_QT_VERSION}KCMUtils QUIET)
find_package(KF${KS7_QT_VERSION}CoreAddons QUIET)
set(KS7_KCM OFF)
if(KF${KS7_QT_VERSION}KCMUtils_FOUND AND KF${KS7_QT_VERSION}CoreAddons_FOUND)
  set(KS7_KCM ON)
  message(STATUS "KS-7: Qt ${KS7_QT_VERSION}, KDE Frameworks ${KF${KS7_QT_VERSION}KCMUtils_VERSION}: module of System Settings and stand-alone host")
else()
  message(STATUS "KS-7: Qt ${KS7_QT_VERSION}, no KDE Frameworks ${KS7_QT_VERSION}: stand-alone host only")
endif()

# System Settings searches for modules in Qt's plug-in folder. Under another prefix than Qt's, install the module to the
# same path below that prefix.
get_target_property(qmake Qt${KS7_QT_VERSION}::qmake IMPORTED_LOCATION)
foreach(variable QT_INSTALL_PREFIX QT_INSTALL_PLUGINS)
  execute_process(COMMAND ${qmake} -query ${variable} OUTPUT_VARIABLE ${variable} OUTPUT_STRIP_TRAILING_WHITESPACE
                  COMMAND_ERROR_IS_FATAL ANY)
endforeach()
file(RELATIVE_PATH qt_plugins ${QT_INSTALL_PREFIX} ${QT_INSTALL_PLUGINS})
set(KS7_QT_PLUGIN_DIR ${qt_plugins} CACHE STRING "Where Qt's plug-ins are installed, below the prefix")
