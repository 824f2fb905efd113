find_package(Python3 3.9 COMPONENTS Interpreter)
if(NOT Python3_Interpreter_FOUND)
  message(FATAL_ERROR "KS-7: Python 3.9 or newer generates the remote interfaces from agent/*.xml. Install python3.")
endif()

# ks7_add_remote_interface(<target> <name>): generates agent/<name>Proxy.h, agent/<name>Caller.h and
# agent/<name>Adaptor.h from com.orvex.<name>Proxy.xml. Adds them to the target.
function(ks7_add_remote_interface target name)
  set(declaration ${CMAKE_CURRENT_SOURCE_DIR}/com.orvex.${name}Proxy.xml)
  set(generator ${PROJECT_SOURCE_DIR}/cmake/remote_interface.py)
  set(headers Proxy.h Caller.h Adaptor.h)
  list(TRANSFORM headers PREPEND ${CMAKE_CURRENT_BINARY_DIR}/${name})
  add_custom_command(
    OUTPUT ${headers}
    COMMAND Python3::Interpreter ${generator} ${declaration} ${CMAKE_CURRENT_BINARY_DIR}
    DEPENDS ${declaration} ${generator}
    COMMENT "Generating the classes of ${name}Proxy"
    VERBATIM)
  target_sources(${target} PRIVATE ${headers})
endfunction()
