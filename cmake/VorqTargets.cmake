# vorq_add_library(NAME SOURCES … HEADERS … DEPENDS …)
#   One library for one folder under src/. Includes are written from src/ ("support/Text.h").
#   HEADERS joins a header set, so that every header is also compiled alone.
function(vorq_add_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;HEADERS;DEPENDS;PRIVATE_DEPENDS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_sources(${name} PUBLIC FILE_SET HEADERS BASE_DIRS ${PROJECT_SOURCE_DIR}/src
                                FILES ${ARG_HEADERS})
  target_link_libraries(${name} PUBLIC ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE_DEPENDS} vorq_options)
  set_target_properties(${name} PROPERTIES VERIFY_INTERFACE_HEADER_SETS ON)
endfunction()

# vorq_add_test(NAME SOURCES … DEPENDS …)
#   One GoogleTest program and one ctest entry for one folder under tests/.
function(vorq_add_test name)
  cmake_parse_arguments(ARG "" "TIMEOUT" "SOURCES;DEPENDS" ${ARGN})
  if(NOT ARG_TIMEOUT)
    set(ARG_TIMEOUT 120)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC OFF VORQ_IS_TEST ON)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_DEPENDS} GTest::gmock vorq_options)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${ARG_TIMEOUT})
endfunction()
