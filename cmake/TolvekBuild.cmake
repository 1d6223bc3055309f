# Options, warnings and the functions with which every folder declares itself.
include_guard()
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

option(TOLVEK_TESTS "Build the tests" ON)
option(TOLVEK_BENCH "Build the benchmarks" OFF)
option(TOLVEK_WINDOW "Build the folders that need the window toolkit, too" ON)
option(TOLVEK_SANITIZE "Address and undefined behaviour sanitizers" OFF)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 reports overlaps and uninitialised bytes inside std::string where there
  # are none (its bugs 105651 and 105562), in optimised builds only.
  add_compile_options(-Wno-restrict -Wno-maybe-uninitialized)
endif()
if(WIN32)
  # The libraries are linked in, and so is the compiler's stack protector.
  add_compile_definitions(U_STATIC_IMPLEMENTATION)
  add_compile_options(-fstack-protector-strong)
  add_link_options(-fstack-protector-strong)
elseif(TOLVEK_SANITIZE)
  # -g1 keeps line numbers in reports at a fraction of the build time of -g.
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                      -fno-omit-frame-pointer -g1 -O1)
  add_link_options(-fsanitize=address,undefined)
else()
  # Hardening against memory errors. The sanitizers find such errors themselves, and
  # fortified functions would hide them from the sanitizers.
  add_compile_options(-fstack-protector-strong)
  add_compile_options($<$<CONFIG:Release>:-U_FORTIFY_SOURCE> $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
  add_link_options(-Wl,-z,relro -Wl,-z,now)
  check_cxx_compiler_flag(-fcf-protection TOLVEK_HAS_CF_PROTECTION)
  if(TOLVEK_HAS_CF_PROTECTION)
    add_compile_options(-fcf-protection)
  endif()
  check_pie_supported(LANGUAGES CXX)
endif()
if(BUILD_SHARED_LIBS)
  # With shared libraries the linker itself rejects a call into a higher layer.
  add_link_options(-Wl,--no-undefined)
endif()

# tolvek_library(NAME SOURCES file... [LINKS target...] [QT])
# One library per folder. LINKS names the layers that the folder may use.
function(tolvek_library name)
  cmake_parse_arguments(ARG "QT" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC ${ARG_LINKS})
  if(ARG_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(${name} PUBLIC Qt6::Widgets)
  endif()
endfunction()

# tolvek_left_out(SOURCES_VARIABLE)
# Takes out of a folder's test files those that tests/windows/left_out.txt names.
function(tolvek_left_out variable)
  file(STRINGS "${PROJECT_SOURCE_DIR}/tests/windows/left_out.txt" lines)
  set(kept ${${variable}})
  foreach(source ${${variable}})
    cmake_path(ABSOLUTE_PATH source NORMALIZE OUTPUT_VARIABLE file)
    cmake_path(RELATIVE_PATH file BASE_DIRECTORY "${PROJECT_SOURCE_DIR}/tests")
    foreach(line ${lines})
      string(FIND "${line}" "${file} " place)
      if(place EQUAL 0)
        list(REMOVE_ITEM kept "${source}")
      endif()
    endforeach()
  endforeach()
  set(${variable} ${kept} PARENT_SCOPE)
endfunction()

# tolvek_test(NAME SOURCES file... LINKS target... [PATIENCE seconds])
# One test program per folder. Every test case is a separate ctest; its timeout is
# PATIENCE seconds, 300 by default.
function(tolvek_test name)
  cmake_parse_arguments(ARG "QT" "PATIENCE" "SOURCES;LINKS" ${ARGN})
  if(NOT ARG_PATIENCE)
    set(ARG_PATIENCE 300)
  endif()
  if(WIN32)
    tolvek_left_out(ARG_SOURCES)
  endif()
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/tests"
                             "${PROJECT_BINARY_DIR}/generated")
  if(TOLVEK_SANITIZE OR WIN32)
    # Half of the time of a sanitizer build went into optimising the test
    # expectations. The libraries under test are optimised as usual.
    target_compile_options(${name} PRIVATE -O0)
  endif()
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gtest)
  if(ARG_QT)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    target_link_libraries(${name} PRIVATE Qt6::Widgets)
  else()
    target_link_libraries(${name} PRIVATE GTest::gtest_main)
  endif()
  include(GoogleTest)
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT ${ARG_PATIENCE} ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
endfunction()

# tolvek_hardened(target...)
# Adds a test for each target that its file was built with the hardening options
# above.
function(tolvek_hardened)
  if(TOLVEK_SANITIZE)
    return()
  endif()
  foreach(target ${ARGN})
    add_test(NAME Hardening.${target}
      COMMAND "${CMAKE_COMMAND}" "-DFILE=$<TARGET_FILE:${target}>"
              -P "${PROJECT_SOURCE_DIR}/cmake/check_hardening.cmake")
  endforeach()
endfunction()
