cmake_minimum_required(VERSION 3.25)
# Keeps the library's floors apart. launch/ is the top floor: it knows every dialog and routes
# requests to them. The dialog folders and framework/ never include a header of launch/, and
# framework/ includes nothing from the dialog folders above it. A header name is unique across
# the library's folders, so an include line names its floor.
#   cmake -DSOURCE_DIR=<repo>/KwMFCUI -P KwCheckLayers.cmake
if(NOT SOURCE_DIR)
  message(FATAL_ERROR "KwCheckLayers: pass -DSOURCE_DIR=<the library folder>")
endif()

set(dialog_floors editors tables sections analysis periphery)

function(headers_of folder out)
  file(GLOB hs RELATIVE ${SOURCE_DIR}/${folder} ${SOURCE_DIR}/${folder}/*.h)
  set(${out} ${hs} PARENT_SCOPE)
endfunction()

# Which headers each file includes with quotes, checked against the headers of the floors it
# must not reach.
function(check_floor folder forbidden_floors)
  set(forbidden)
  foreach(f IN LISTS forbidden_floors)
    headers_of(${f} hs)
    foreach(h IN LISTS hs)
      list(APPEND forbidden "${f}/${h}")
    endforeach()
  endforeach()
  file(GLOB sources ${SOURCE_DIR}/${folder}/*.cpp ${SOURCE_DIR}/${folder}/*.h)
  foreach(src IN LISTS sources)
    file(STRINGS ${src} lines REGEX "^[ \t]*#[ \t]*include[ \t]*\"")
    foreach(line IN LISTS lines)
      string(REGEX REPLACE "^[ \t]*#[ \t]*include[ \t]*\"([^\"]+)\".*" "\\1" inc "${line}")
      get_filename_component(inc_name "${inc}" NAME)
      foreach(entry IN LISTS forbidden)
        get_filename_component(name "${entry}" NAME)
        if(inc_name STREQUAL name)
          file(RELATIVE_PATH rel ${SOURCE_DIR} ${src})
          list(APPEND KW_LAYER_ERRORS "${rel} includes ${entry}")
          set(KW_LAYER_ERRORS ${KW_LAYER_ERRORS} PARENT_SCOPE)
        endif()
      endforeach()
    endforeach()
  endforeach()
endfunction()

set(KW_LAYER_ERRORS)
foreach(floor IN LISTS dialog_floors)
  check_floor(${floor} "launch")
endforeach()
check_floor(framework "launch;${dialog_floors}")

# A header name used by two floors would make the include lines ambiguous.
set(seen)
foreach(floor IN LISTS dialog_floors ITEMS framework launch)
  headers_of(${floor} hs)
  foreach(h IN LISTS hs)
    if(h IN_LIST seen)
      list(APPEND KW_LAYER_ERRORS "${floor}/${h}: a header of this name exists on another floor")
    endif()
    list(APPEND seen ${h})
  endforeach()
endforeach()

if(KW_LAYER_ERRORS)
  list(JOIN KW_LAYER_ERRORS "\n  " text)
  message(FATAL_ERROR "Include lines that cross the library's floors:\n  ${text}")
endif()
message(STATUS "KwCheckLayers: no include line crosses the library's floors")
