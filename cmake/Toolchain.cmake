# Sets the language version, warnings, sanitizers and output folders.
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
# The .ui files are not beside the sources that use them, so AUTOUIC must search resources/.
set(CMAKE_AUTOUIC_SEARCH_PATHS ${CMAKE_SOURCE_DIR}/resources)

set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_program(CCACHE ccache)
if(CCACHE)
  # With these settings ccache also caches sources that use precompiled headers.
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

# Warnings are errors, also in the sources that moc and uic write.
add_compile_options(-Wall -Wextra -Wpedantic -Werror)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  # Do not warn about two GNU extensions in PipeWire's macros: statement expressions and empty variadic arguments.
  add_compile_options(-Wno-gnu-statement-expression -Wno-gnu-zero-variadic-macro-arguments)
endif()
# Only some targets need these options. Set them for all targets, so that libraries and programs can share precompiled
# headers.
add_compile_options(-pthread -fPIC)
add_compile_definitions(QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
                        QT_USE_QSTRINGBUILDER)

if(NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
  # Report undefined symbols of a plug-in when it is linked, not when a host loads it.
  add_link_options(-Wl,--no-undefined)
endif()

# Every test links the whole pane. lld needs a fifth of the default linker's time. Release builds, as in packages, use
# the default linker.
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
