# What every target of the project has in common.
include_guard(GLOBAL)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

add_library(tavelo_options INTERFACE)
target_include_directories(tavelo_options INTERFACE "${PROJECT_SOURCE_DIR}")
target_compile_options(
  tavelo_options
  INTERFACE -Wall
            -Wextra
            -Wpedantic
            -Wshadow
            -Wconversion
            -Wsign-conversion
            -Wnon-virtual-dtor
            -Woverloaded-virtual
            -Wformat=2)
if(TAVELO_MACOS)
  # A Mac's compiler is newer than those that must accept the code without a warning.
  target_compile_options(tavelo_options INTERFACE -Wno-nullability-extension $<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc>)
else()
  target_compile_options(tavelo_options INTERFACE -Werror)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # When it optimises, GCC 12 warns of overlaps inside std::string's operators that do not exist (its bug 105651).
  target_compile_options(tavelo_options INTERFACE -Wno-restrict)
endif()
# What is installed does not say where it was built, so two builds of one source are the same.
target_compile_options(
  tavelo_options INTERFACE $<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>
                           $<$<CONFIG:Release>:-ffile-prefix-map=${PROJECT_BINARY_DIR}/=>)
if(TAVELO_SANITIZE)
  set(sanitizers -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(tavelo_options INTERFACE ${sanitizers})
  target_link_options(tavelo_options INTERFACE ${sanitizers})
endif()
if(TAVELO_BUILD_FUZZERS)
  target_compile_options(tavelo_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# tavelo_library(NAME SOURCES a.cpp … [DEPENDS lib …]): one static library per folder.
function(tavelo_library name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(${name} STATIC ${arg_SOURCES})
  target_link_libraries(${name} PUBLIC tavelo_options ${arg_DEPENDS})
endfunction()

# tavelo_test(NAME SOURCES a.cpp … [DEPENDS lib …]): a GoogleTest program. Every case is a ctest test with a time limit, so
# that nothing can hang a run. Windows are drawn in memory.
function(tavelo_test name)
  cmake_parse_arguments(arg "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE tavelo_options ${arg_DEPENDS} GTest::gmock_main)
  gtest_discover_tests(
    ${name}
    DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 60
               ENVIRONMENT_MODIFICATION "QT_QPA_PLATFORM=set:offscreen"
               ENVIRONMENT "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/leaks.supp")
endfunction()
