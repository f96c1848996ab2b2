# The kinds of target that the project has, each with the same language, warnings and checks.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

# What the programs do without; the presets have all three.
option(GATEWAY_TESTS "Build the tests, their support and the examples (GoogleTest)" OFF)
option(GATEWAY_BENCHMARKS "Build the benchmarks (Google Benchmark, inih, GoogleTest)" OFF)
option(GATEWAY_DEVICE_SERVER "Build mdio_simulator (libfuse3)" OFF)

set(GATEWAY_SANITIZERS "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")
option(GATEWAY_FUZZ "Build the fuzz targets for the fuzzing engine (Clang)" OFF)
option(GATEWAY_TEST_PER_PROGRAM "One CTest entry for each test program instead of each test" OFF)
option(GATEWAY_COVERAGE "Count which lines and branches of the shipped code run" OFF)

# GCC 12 forgets that a precompiled header is the system's and warns of what is in it. The coverage
# preset, whose code has met all warnings in others, goes without them.
if(GATEWAY_COVERAGE OR CMAKE_CXX_COMPILER_ID STREQUAL Clang)
    set(GATEWAY_PRECOMPILED_TESTS ON)
endif()

add_library(gateway_options INTERFACE)
target_include_directories(gateway_options INTERFACE ${CMAKE_SOURCE_DIR})
target_compile_options(gateway_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Wcast-qual -Wundef
    -Wformat-security -Wmissing-declarations -Werror)
target_compile_definitions(gateway_options INTERFACE
    _FILE_OFFSET_BITS=64 _TIME_BITS=64)
target_compile_options(gateway_options INTERFACE -ffunction-sections -fdata-sections)
target_link_options(gateway_options INTERFACE -Wl,--gc-sections -Wl,--as-needed)
if(GATEWAY_SANITIZERS)
    target_compile_options(gateway_options INTERFACE
        -fsanitize=${GATEWAY_SANITIZERS} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(gateway_options INTERFACE -fsanitize=${GATEWAY_SANITIZERS})
endif()

# Lets a target of what is shipped count what of it runs; tests, their support and the simulator do
# not. Counters that threads may share are atomic, which makes code some ten times slower.
function(gateway_count_coverage name)
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY ${CMAKE_SOURCE_DIR}
        OUTPUT_VARIABLE folder)
    if(GATEWAY_COVERAGE AND folder MATCHES "^(launcher|switch|ntp|programs)(/|$)")
        target_compile_options(${name} PRIVATE
            --coverage $<$<IN_LIST:${folder},ntp;programs>:-fprofile-update=atomic>)
        target_link_options(${name} PUBLIC --coverage)
    endif()
endfunction()

# gateway_library(NAME SOURCES file... [LINKS library...] [PRIVATE_LINKS library...])
function(gateway_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS;PRIVATE_LINKS")
    add_library(${name} STATIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC gateway_options ${arg_LINKS} PRIVATE ${arg_PRIVATE_LINKS})
    gateway_count_coverage(${name})
endfunction()

# All programs, without the tests: what a person who wants to run one waits for.
add_custom_target(programs)

# gateway_program(NAME SOURCES file... LINKS library...): built into bin/ of the build folder.
function(gateway_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE gateway_options ${arg_LINKS})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
    add_dependencies(programs ${name})
    gateway_count_coverage(${name})
endfunction()

# gateway_test(NAME SOURCES file... LINKS library... [SECONDS limit]): a GoogleTest program. SECONDS
# bounds one CTest entry; the default suits a single test, or a whole program where
# GATEWAY_TEST_PER_PROGRAM is set. Full optimisation of the test itself would be waited for longer
# than it saves.
function(gateway_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "SECONDS" "SOURCES;LINKS")
    add_executable(${name} ${arg_SOURCES})
    target_link_libraries(${name} PRIVATE
        gateway_options ${arg_LINKS} test_support GTest::gmock GTest::gtest_main)
    target_compile_options(${name} PRIVATE $<$<CONFIG:Release>:-O1>)
    if(GATEWAY_PRECOMPILED_TESTS)
        target_precompile_headers(${name} REUSE_FROM test_support)
    endif()
    if(GATEWAY_TEST_PER_PROGRAM)
        if(NOT arg_SECONDS)
            set(arg_SECONDS 300)
        endif()
        add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
        set_tests_properties(${name} PROPERTIES TIMEOUT ${arg_SECONDS})
    else()
        if(NOT arg_SECONDS)
            set(arg_SECONDS 60)
        endif()
        gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT ${arg_SECONDS})
    endif()
endfunction()

# All fuzz targets: what the preset "fuzzing" builds.
add_custom_target(fuzz_targets)

# gateway_fuzz_target(NAME SOURCES file... LINKS library...): a target of the fuzzing engine where
# GATEWAY_FUZZ is set; otherwise a test that runs it on the files of fuzz/seeds/NAME.
function(gateway_fuzz_target name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINKS")
    add_executable(fuzz_${name} ${arg_SOURCES})
    target_link_libraries(fuzz_${name} PRIVATE gateway_options ${arg_LINKS})
    add_dependencies(fuzz_targets fuzz_${name})
    if(GATEWAY_FUZZ)
        # The target itself is not instrumented: the edges that a run counts are the product's.
        set_source_files_properties(${arg_SOURCES} PROPERTIES
            COMPILE_OPTIONS -fno-sanitize=fuzzer-no-link)
        target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
    else()
        target_sources(fuzz_${name} PRIVATE replay.cpp)
        add_test(NAME Seeds.${name} COMMAND fuzz_${name} ${CMAKE_CURRENT_SOURCE_DIR}/seeds/${name})
        set_tests_properties(Seeds.${name} PROPERTIES TIMEOUT 60)
    endif()
endfunction()
