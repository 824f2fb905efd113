# Language, warnings, sanitizers and output folders.
include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTOUIC ON)
set(CMAKE_AUTORCC ON)
# Interface files and the list of resources stand in resources/, apart from the code that uses them.
set(CMAKE_AUTOUIC_SEARCH_PATHS ${CMAKE_SOURCE_DIR}/resources)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_program(CCACHE ccache)
if(CCACHE)
  # ccache needs these settings for precompiled headers.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

# Ours only: generated code (moc, uic, D-Bus) is compiled with them too and is clean.
add_compile_options(-Wall -Wextra -Wpedantic -Werror)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  # The macros in PipeWire's headers use statement expressions and empty variadic arguments.
  add_compile_options(-Wno-gnu-statement-expression -Wno-gnu-zero-variadic-macro-arguments)
endif()
# Some targets need these. Set for all, so that one precompiled header fits libraries and programs.
add_compile_options(-pthread -fPIC)
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
                        QT_USE_QSTRINGBUILDER)

if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
  # Let the linker report undefined symbols of a plug-in, instead of the loader.
  add_link_options(-Wl,--no-undefined)
endif()

# Every test links the whole pane: lld takes a fifth of the default linker's time. Packages use the default one.
find_program(KS7_LLD ld.lld)
mark_as_advanced(KS7_LLD)
if(KS7_LLD AND NOT CMAKE_BUILD_TYPE STREQUAL Release)
  add_link_options(-fuse-ld=lld)
endif()

if(KS7_SANITIZE)
  add_compile_options(-fsanitize=${KS7_SANITIZE} -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${KS7_SANITIZE})
  if(KS7_SANITIZE MATCHES undefined)
    add_compile_options(-fno-sanitize-recover=undefined)
  endif()
endif()
