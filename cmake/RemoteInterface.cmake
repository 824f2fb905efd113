# ks7_add_remote_interface(<target> <xml> <name> SERVICE <class> HEADER <header of the class>)
#
# Generates <name>Interface (the caller's proxy) and <name>Adaptor (the server's end) from the interface's one
# declaration and adds both to the target. The proxy gets our own base class, see agent/RemoteInterface.h.
function(ks7_add_remote_interface target xml name)
  cmake_parse_arguments(REMOTE "" "SERVICE;HEADER" "" ${ARGN})
  set(declaration ${CMAKE_CURRENT_SOURCE_DIR}/${xml})
  set(proxy ${CMAKE_CURRENT_BINARY_DIR}/${name}Interface)
  add_custom_command(
    OUTPUT ${proxy}.h ${proxy}.cpp
    COMMAND Qt${KS7_QT_VERSION}::qdbusxml2cpp -c ${name}Interface -i agent/WireTypes.h -p ${name}Interface ${declaration}
    COMMAND ${CMAKE_COMMAND} -DFILE=${proxy} -P ${PROJECT_SOURCE_DIR}/cmake/RebaseProxy.cmake
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
    DEPENDS ${declaration} ${PROJECT_SOURCE_DIR}/cmake/RebaseProxy.cmake
    COMMENT "Generating ${name}Interface"
    VERBATIM)
  target_sources(${target} PRIVATE ${proxy}.h ${proxy}.cpp)
  qt_add_dbus_adaptor(adaptor ${declaration} ${REMOTE_HEADER} ${REMOTE_SERVICE} ${name}Adaptor ${name}Adaptor)
  target_sources(${target} PRIVATE ${adaptor})
endfunction()
