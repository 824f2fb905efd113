# Sets KS7_QT_VERSION to 5 or 6 if it is "auto". A module of System Settings must use the same Qt as its host, so the
# installed KDE Frameworks decide. Without them, only the stand-alone host is built, with the newest supported Qt.
if(NOT KS7_QT_VERSION STREQUAL "auto")
  return()
endif()

find_package(KF6KCMUtils QUIET)
find_package(KF5KCMUtils QUIET)
find_package(Qt5Widgets QUIET)
set(KS7_QT_VERSION 6)
if(NOT KF6KCMUtils_FOUND AND Qt5Widgets_FOUND)
  find_package(Qt6Widgets 6.8 QUIET)
  if(KF5KCMUtils_FOUND OR NOT Qt6Widgets_FOUND)
    set(KS7_QT_VERSION 5)
  endif()
endif()
