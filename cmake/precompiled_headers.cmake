# The largest headers of a folder's programs, read once for all of them (OLH_PRECOMPILED_HEADERS).
set(OLH_HEADERS_OF_TOOLS <nlohmann/json.hpp> <filesystem> <functional> <map> <string> <vector>)

# olh_precompiled_headers(NAME HEADERS...): for targets that are compiled as those of this folder are.
function(olh_precompiled_headers name)
  set(source ${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp)
  file(CONFIGURE OUTPUT ${source} CONTENT "")
  add_library(${name} OBJECT ${source})
  set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
  target_link_libraries(${name} PRIVATE olh_warnings)
  target_precompile_headers(${name} PRIVATE ${ARGN})
endfunction()

# olh_use_headers(NAME DIRECTORY): in every target that this folder and those below it declare, but for those in C.
function(olh_use_headers name directory)
  get_property(targets DIRECTORY ${directory} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(type ${target} TYPE)
    get_target_property(sources ${target} SOURCES)
    if(type MATCHES "EXECUTABLE|STATIC_LIBRARY|OBJECT_LIBRARY" AND sources MATCHES "[.]cpp" AND NOT target STREQUAL name)
      target_precompile_headers(${target} REUSE_FROM ${name})
    endif()
  endforeach()
  get_property(folders DIRECTORY ${directory} PROPERTY SUBDIRECTORIES)
  foreach(folder IN LISTS folders)
    olh_use_headers(${name} ${folder})
  endforeach()
endfunction()
