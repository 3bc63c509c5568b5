# vorel_add_test(NAME name SOURCES ... [LIBS ...] [ENV ...] [PROPERTIES ...] [VIRTUAL_DISPLAY])
# Builds one GoogleTest program and registers each of its tests with CTest. Every test runs
# with Qt's offscreen platform; in a sanitizer build, sanitizer reports fail the test.
# PROPERTIES are more CTest properties of every test (for example FIXTURES_REQUIRED name).
# VIRTUAL_DISPLAY runs the program inside a virtual X server of its own
# (scripts/with-virtual-display), for tests that draw with OpenGL.
find_package(GTest REQUIRED)
include(GoogleTest)

set(VOREL_TEST_ENVIRONMENT "QT_QPA_PLATFORM=offscreen")
if(VOREL_SANITIZE)
  list(APPEND VOREL_TEST_ENVIRONMENT "ASAN_OPTIONS=detect_leaks=1:strict_string_checks=1")
endif()

function(vorel_add_test)
  cmake_parse_arguments(T "VIRTUAL_DISPLAY" "NAME" "SOURCES;LIBS;ENV;PROPERTIES" ${ARGN})
  add_executable(${T_NAME} ${T_SOURCES})
  target_link_libraries(${T_NAME} PRIVATE GTest::gtest GTest::gmock ${T_LIBS})
  if(T_VIRTUAL_DISPLAY)
    # The discovery reads this property, so it runs the program the same way.
    set_target_properties(${T_NAME} PROPERTIES
      CROSSCOMPILING_EMULATOR ${PROJECT_SOURCE_DIR}/scripts/with-virtual-display)
  endif()
  gtest_discover_tests(${T_NAME}
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 600 ${T_PROPERTIES})
  # The environment is a list, which the discovered tests' properties cannot carry (its second
  # entry would be read as a property name), so a script run after the discovery sets it.
  set(environment ${VOREL_TEST_ENVIRONMENT} ${T_ENV})
  set(environment_script ${CMAKE_CURRENT_BINARY_DIR}/${T_NAME}_environment.cmake)
  file(WRITE ${environment_script}
    "if(${T_NAME}_TESTS)\n"
    "  set_tests_properties(\${${T_NAME}_TESTS} PROPERTIES ENVIRONMENT \"${environment}\")\n"
    "endif()\n")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${environment_script})
endfunction()
