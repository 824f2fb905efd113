# Precompiles Qt's headers, because they are most of the text that the compiler reads. clang-tidy (tools/check) and the
# build of packages compile without them, which reveals missing includes.
option(KS7_PRECOMPILED_HEADERS "Compile Qt's headers once for all sources" OFF)

# ks7_add_precompiled_headers(<name>): adds a library with precompiled headers. Only targets with the same compiler
# options can use it, so each folder with other options needs its own.
function(ks7_add_precompiled_headers name)
  if(KS7_PRECOMPILED_HEADERS)
    file(WRITE ${CMAKE_BINARY_DIR}/${name}.cpp "")
    add_library(${name} STATIC ${CMAKE_BINARY_DIR}/${name}.cpp)
    set_target_properties(${name} PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    target_link_libraries(${name} PRIVATE Qt${KS7_QT_VERSION}::Widgets Qt${KS7_QT_VERSION}::DBus)
    target_precompile_headers(${name} PRIVATE <QtWidgets/QtWidgets> <QtDBus/QtDBus> <algorithm> <functional> <memory>
                              <optional> <string> <vector>)
  endif()
endfunction()

# ks7_precompile_headers(<name> <target>...): lets targets that use Qt Widgets and D-Bus compile with the headers of
# <name>.
function(ks7_precompile_headers name)
  if(KS7_PRECOMPILED_HEADERS)
    foreach(target ${ARGN})
      target_precompile_headers(${target} REUSE_FROM ${name})
      # The source file that moc generates needs few of these headers, so compile it without them.
      get_target_property(folder ${target} BINARY_DIR)
      set_source_files_properties(${folder}/${target}_autogen/mocs_compilation.cpp TARGET_DIRECTORY ${target}
                                  PROPERTIES SKIP_PRECOMPILE_HEADERS ON)
    endforeach()
  endif()
endfunction()
