set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
find_program(HORALO_PYTHON /usr/bin/python3 REQUIRED)

# horalo_test(FOLDER.TOPIC [QT|WIDGETS] SOURCES... LINK LIBRARIES...): a GoogleTest program and its
# registration with ctest. QT gives it a QCoreApplication, WIDGETS a QApplication on a screen in
# memory. Nobody's home, session bus or display is within its reach: what a test needs of these, it
# makes for itself.
function(horalo_test name)
  cmake_parse_arguments(ARG "QT;WIDGETS" "" "SOURCES;LINK" ${ARGN})
  if(ARG_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "horalo_test(${name}): what is ${ARG_UNPARSED_ARGUMENTS}?")
  endif()
  set(target test.${name})
  add_executable(${target} ${ARG_SOURCES})
  target_link_libraries(${target} PRIVATE horalo_options ${ARG_LINK} GTest::gmock)
  if(ARG_WIDGETS)
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/mains/widgets_main.cpp)
    target_link_libraries(${target} PRIVATE Qt6::Widgets)
  elseif(ARG_QT)
    target_sources(${target} PRIVATE ${PROJECT_SOURCE_DIR}/tests/mains/core_main.cpp)
    target_link_libraries(${target} PRIVATE Qt6::Core)
  else()
    target_link_libraries(${target} PRIVATE GTest::gmock_main)
  endif()
  if(ARG_WIDGETS OR ARG_QT)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
  endif()

  add_test(NAME ${name} COMMAND ${target})
  set(home ${CMAKE_BINARY_DIR}/tests/no-home)
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT_MODIFICATION
    "HOME=set:${home};XDG_CONFIG_HOME=unset:;XDG_STATE_HOME=unset:;XDG_DATA_HOME=unset:;\
XDG_RUNTIME_DIR=unset:;DBUS_SESSION_BUS_ADDRESS=set:disabled:;DISPLAY=unset:;\
WAYLAND_DISPLAY=unset:;QT_QPA_PLATFORM=set:offscreen")
endfunction()
