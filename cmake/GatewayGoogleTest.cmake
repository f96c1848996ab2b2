# GoogleTest: the installed library, or, for another architecture, built from its installed sources.

include(GoogleTest)
if(CMAKE_CROSSCOMPILING)
    add_subdirectory(/usr/src/googletest ${CMAKE_BINARY_DIR}/googletest EXCLUDE_FROM_ALL SYSTEM)
    if(NOT TARGET GTest::gmock)
        add_library(GTest::gmock ALIAS gmock)
        add_library(GTest::gtest_main ALIAS gtest_main)
    endif()
else()
    find_package(GTest REQUIRED)
endif()
