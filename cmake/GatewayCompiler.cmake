# Where the compiler of a preset is missing, or the libraries of its target: ends the configuration
# with the way to get them. Before project(), whose own message would not tell.

function(gateway_check_compiler)
    if(CMAKE_TOOLCHAIN_FILE)
        include(${CMAKE_TOOLCHAIN_FILE})
    endif()
    if(CMAKE_CXX_COMPILER)
        find_program(compiler ${CMAKE_CXX_COMPILER} NO_CACHE)
    endif()
    if(CMAKE_CXX_COMPILER AND NOT compiler)
        set(group checks)
        if(CMAKE_CXX_COMPILER STREQUAL g++)
            set(group build)
        endif()
        message(FATAL_ERROR
            "${CMAKE_CXX_COMPILER} is not on this machine; to install it:\n"
            "  tools/install_packages ${group}")
    endif()
    if(GATEWAY_ARM_ROOT AND NOT EXISTS ${GATEWAY_ARM_ROOT})
        message(FATAL_ERROR
            "The ARM libraries are not in .cache/armhf/; to fetch them:\n  tools/fetch_arm_packages")
    endif()
endfunction()

gateway_check_compiler()
