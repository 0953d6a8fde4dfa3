# Language level, warnings, linker, compiler cache and sanitizers shared by every target.

set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_AUTOMOC ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_UNITY_BUILD ${VORQ_UNITY})
set(CMAKE_UNITY_BUILD_BATCH_SIZE 12)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_program(VORQ_CCACHE ccache)
if(VORQ_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros
                                  ${VORQ_CCACHE})
endif()

add_library(vorq_options INTERFACE)
target_compile_options(vorq_options INTERFACE
  -Wall -Wextra -Wpedantic
  # Compiled at once, tests hide each other's names; on their own they are checked.
  $<$<NOT:$<AND:$<BOOL:${VORQ_UNITY}>,$<BOOL:$<TARGET_PROPERTY:VORQ_IS_TEST>>>>:-Wshadow>
  -Wconversion -Werror)

if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
  add_link_options(-fuse-ld=lld)
endif()
if(VORQ_SANITIZERS)
  add_compile_options(-fsanitize=${VORQ_SANITIZERS} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  string(REPLACE ",fuzzer-no-link" "" link_sanitizers ${VORQ_SANITIZERS})
  add_link_options(-fsanitize=${link_sanitizers})
endif()
if(VORQ_SANITIZERS MATCHES address)
  add_library(vorq_sanitizer_defaults OBJECT ${CMAKE_CURRENT_LIST_DIR}/SanitizerDefaults.cpp)
  set_target_properties(vorq_sanitizer_defaults PROPERTIES AUTOMOC OFF)
  link_libraries($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:vorq_sanitizer_defaults>)
endif()
