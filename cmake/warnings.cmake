# Warnings are errors, with GCC 12 and Clang 14 alike; the sanitizers go to every target.
add_library(horalo_options INTERFACE)
target_include_directories(horalo_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(horalo_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Woverloaded-virtual -Wnon-virtual-dtor -Wcast-qual -Wformat=2 -Wimplicit-fallthrough -Werror)
target_compile_definitions(horalo_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_FOREACH
  QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)
if(HORALO_SANITIZE)
  target_compile_options(horalo_options INTERFACE
    -fsanitize=${HORALO_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(horalo_options INTERFACE -fsanitize=${HORALO_SANITIZE})
endif()

# horalo_library(NAME SOURCES... LINK LIBRARIES...): a static library with the project's options.
function(horalo_library name)
  cmake_parse_arguments(ARG "QT" "" "SOURCES;LINK" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC horalo_options ${ARG_LINK})
  set_target_properties(${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  if(ARG_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
  endif()
endfunction()
