# Qt's headers, read once for all: most of what the compiler does. That each source includes what it uses is seen by
# clang-tidy, which reads the sources without them (tools/check), and by the build of packages.
option(KS7_PRECOMPILED_HEADERS "Read Qt's headers once for all" OFF)

if(KS7_PRECOMPILED_HEADERS)
  file(WRITE ${CMAKE_BINARY_DIR}/precompiled.cpp "")
  add_library(ks7_precompiled STATIC ${CMAKE_BINARY_DIR}/precompiled.cpp)
  set_target_properties(ks7_precompiled PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
  target_link_libraries(ks7_precompiled PRIVATE Qt${KS7_QT_VERSION}::Widgets Qt${KS7_QT_VERSION}::DBus)
  target_precompile_headers(ks7_precompiled PRIVATE <QtWidgets/QtWidgets> <QtDBus/QtDBus> <algorithm> <functional> <memory>
                            <optional> <string> <vector>)
endif()

# ks7_precompile_headers(<target>...): for targets with the same compiler options that use Qt Widgets and D-Bus.
function(ks7_precompile_headers)
  if(KS7_PRECOMPILED_HEADERS)
    foreach(target ${ARGN})
      target_precompile_headers(${target} REUSE_FROM ks7_precompiled)
      # moc's own output needs little of them.
      get_target_property(folder ${target} BINARY_DIR)
      set_source_files_properties(${folder}/${target}_autogen/mocs_compilation.cpp TARGET_DIRECTORY ${target}
                                  PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    endforeach()
  endif()
endfunction()
