# Puts a generated proxy on our own base class: cmake -DFILE=<path without ending> -P RebaseProxy.cmake
foreach(ending h cpp)
  file(READ ${FILE}.${ending} text)
  string(REPLACE "QDBusAbstractInterface" "RemoteInterface" text "${text}")
  string(REPLACE "#include \"agent/WireTypes.h\"" "#include \"agent/RemoteInterface.h\"\n#include \"agent/WireTypes.h\"" text "${text}")
  file(WRITE ${FILE}.${ending} "${text}")
endforeach()
