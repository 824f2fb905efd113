# Each resources/translations/ks7_LANGUAGE.ts is compiled into every target that shows texts. The target
# update-translations updates the .ts files from the sources.
file(GLOB KS7_TRANSLATIONS CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/resources/translations/ks7_*.ts)
add_custom_target(update-translations
  COMMAND ${CMAKE_COMMAND} -E env LUPDATE=$<TARGET_FILE:Qt${KS7_QT_VERSION}::lupdate>
          ${PROJECT_SOURCE_DIR}/tools/update-translations
  VERBATIM)

# ks7_add_translations(<target> <prefix>): adds the compiled translations to the target's resources, below the prefix.
function(ks7_add_translations target prefix)
  qt_add_translation(compiled ${KS7_TRANSLATIONS})
  set(entries "")
  foreach(file ${compiled})
    cmake_path(GET file FILENAME name)
    string(APPEND entries "<file alias=\"${name}\">${file}</file>")
  endforeach()
  set(list ${CMAKE_CURRENT_BINARY_DIR}/${target}_translations.qrc)
  file(CONFIGURE OUTPUT ${list} @ONLY
       CONTENT "<RCC><qresource prefix=\"@prefix@\">@entries@</qresource></RCC>\n")
  target_sources(${target} PRIVATE ${list} ${compiled})
endfunction()
