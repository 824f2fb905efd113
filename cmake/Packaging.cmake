# Installs the files beside the programs. cpack makes three Debian packages: the pane with its hosts, the stand-in
# agent, and the files for developers of an agent.
set(KS7_MAINTAINER "Orvex Network <support@orvex.example>" CACHE STRING "Maintainer of the packages")
set(KS7_RELEASE_DATE 2026-11-21)
set(KS7_CHANGELOG_DATE "Sat, 21 Nov 2026 12:00:00 +0000")

set(resources ${PROJECT_SOURCE_DIR}/resources)
set(packaging ${PROJECT_BINARY_DIR}/packaging)

function(ks7_compress file)
  execute_process(COMMAND gzip -9nkf ${file} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# ks7_install_manual(<page> <component>): configures, compresses and installs a manual page.
function(ks7_install_manual page component)
  configure_file(${resources}/desktop/${page}.in ${packaging}/${page} @ONLY)
  ks7_compress(${packaging}/${page})
  install(FILES ${packaging}/${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
endfunction()

# ks7_install_debian_documents(<package> <component>): installs the documents that Debian requires in every package.
function(ks7_install_debian_documents package component)
  install(FILES ${packaging}/copyright ${packaging}/changelog.Debian.gz
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
endfunction()

configure_file(${resources}/desktop/com.orvex.ks7_preferences.metainfo.xml.in
               ${packaging}/com.orvex.ks7_preferences.metainfo.xml @ONLY)
install(FILES ${packaging}/com.orvex.ks7_preferences.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${resources}/desktop/ks7-preferences.categories
        DESTINATION ${CMAKE_INSTALL_DATADIR}/qlogging-categories${KS7_QT_VERSION})
ks7_install_manual(ks7-preferences.1 preferences)
ks7_install_manual(ks7-agent-check.1 development)
if(KS7_BUILD_SIMULATOR)
  # groff needs hyphens of commands escaped. Otherwise it prints a typographic hyphen, which cannot be pasted into a
  # shell.
  file(READ ${PROJECT_SOURCE_DIR}/simulator/ShellLines.txt KS7_SHELL_LINES)
  string(STRIP "${KS7_SHELL_LINES}" KS7_SHELL_LINES)
  string(REPLACE "-" "\\-" KS7_SHELL_LINES "${KS7_SHELL_LINES}")
  ks7_install_manual(ks7-agent-simulator.1 simulator)
  configure_file(${resources}/desktop/com.orvex.KS7AgentServer.service.in
                 ${packaging}/com.orvex.KS7AgentServer.service @ONLY)
  install(FILES ${packaging}/com.orvex.KS7AgentServer.service
          DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services COMPONENT simulator)
endif()

# Developers of an agent need the interfaces, their documentation and an example.
configure_file(${PROJECT_SOURCE_DIR}/agent/ks7-agent.pc.in ${packaging}/ks7-agent.pc @ONLY)
install(FILES ${packaging}/ks7-agent.pc DESTINATION ${CMAKE_INSTALL_DATADIR}/pkgconfig COMPONENT development)
install(FILES ${PROJECT_SOURCE_DIR}/agent/com.orvex.KS7DeviceControllerProxy.xml
              ${PROJECT_SOURCE_DIR}/agent/com.orvex.TernUSBCommandControllerProxy.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/interfaces COMPONENT development)
install(FILES ${PROJECT_SOURCE_DIR}/docs/AGENT.md
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/ks7-agent-dev COMPONENT development)
install(PROGRAMS ${PROJECT_SOURCE_DIR}/docs/examples/ks7_agent.py
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/ks7-agent-dev/examples COMPONENT development)

if(EXISTS /etc/debian_version)
  cmake_host_system_information(RESULT KS7_DEBIAN_RELEASE QUERY DISTRIB_VERSION_CODENAME)
  configure_file(${resources}/debian/copyright.in ${packaging}/copyright @ONLY)
  configure_file(${resources}/debian/changelog.in ${packaging}/changelog.Debian @ONLY)
  ks7_compress(${packaging}/changelog.Debian)
  ks7_install_debian_documents(ks7-preferences preferences)
  ks7_install_debian_documents(ks7-agent-dev development)
  if(KS7_BUILD_SIMULATOR)
    ks7_install_debian_documents(ks7-agent-simulator simulator)
  endif()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_VENDOR "Orvex Network")
set(CPACK_PACKAGE_CONTACT "${KS7_MAINTAINER}")
set(CPACK_PACKAGE_HOMEPAGE_URL "https://${KS7_WEBSITE_HOST}/")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
# Without these permissions, the folders in the packages would depend on the umask of the user who builds them.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_COMPONENTS_ALL preferences development)
if(KS7_BUILD_SIMULATOR)
  list(APPEND CPACK_COMPONENTS_ALL simulator)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

set(CPACK_DEBIAN_PREFERENCES_PACKAGE_NAME ks7-preferences)
set(CPACK_DEBIAN_PREFERENCES_PACKAGE_SECTION kde)
set(CPACK_DEBIAN_PREFERENCES_DESCRIPTION
"settings of the KS-7 wireless webcam
The settings pane of the KS-7 Bluetooth webcam: a module for System Settings
and a program with a window of its own. It lists the cameras, shows their
picture and audio levels, changes names and passkeys, updates firmware and
switches the service on and off.")
# dpkg-shlibdeps finds linked libraries only. Name the packages of plug-ins for GStreamer, icons and Wayland here.
set(CPACK_DEBIAN_PREFERENCES_PACKAGE_DEPENDS "gstreamer1.0-pipewire, gstreamer1.0-plugins-base")
set(CPACK_DEBIAN_PREFERENCES_PACKAGE_RECOMMENDS "pipewire, wireplumber")
if(KS7_QT_VERSION EQUAL 6)
  string(APPEND CPACK_DEBIAN_PREFERENCES_PACKAGE_DEPENDS ", qt6-svg-plugins")
  string(APPEND CPACK_DEBIAN_PREFERENCES_PACKAGE_RECOMMENDS ", qt6-wayland")
else()
  string(APPEND CPACK_DEBIAN_PREFERENCES_PACKAGE_DEPENDS ", libqt5svg5")
  string(APPEND CPACK_DEBIAN_PREFERENCES_PACKAGE_RECOMMENDS ", qtwayland5")
endif()
set(CPACK_DEBIAN_PREFERENCES_PACKAGE_SUGGESTS "systemsettings, bluez, packagekit")

set(CPACK_DEBIAN_SIMULATOR_PACKAGE_NAME ks7-agent-simulator)
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_SIMULATOR_DESCRIPTION
"stand-in for the camera agent of the KS-7 webcam
Takes the place of the camera agent on the session bus, with cameras of its
own, so that the settings pane of the KS-7 can be tried, shown and tested
without a camera.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ks7-agent-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"interfaces and check of the camera agent of the KS-7 webcam
For those who write an agent for the settings pane of the KS-7: its contract,
the D-Bus interfaces with a pkg-config file, an example in Python, and
ks7-agent-check, which checks an agent against the contract.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "ks7-agent-simulator, python3-gi, pkgconf")

include(CPack)
