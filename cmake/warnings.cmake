# Warnings of the project's own targets. Every target built from this repository's sources (the library,
# the test kit, the tests, the tools, the services, the devtools, the examples, the benchmarks and fuzz
# targets) calls gameui_warnings(<target>...) right after it is declared; a new target does the same.
#
#   gameui_warnings(<target>... [CONVERSION])
#
# turns on -Wall -Wextra -Wshadow for the targets' own sources (CONVERSION adds -Wconversion, for code
# whose types do not follow a fixed interface). Unused parameters are not reported: overridden hooks keep
# the names of the parameters their interface gives them. The default build stays warning-free with them; with
# GAMEUI_WERROR=ON (make test's builds) every warning is an error. Third-party code built alongside
# (GoogleTest from source) does not call it and keeps its own flags.
option(GAMEUI_WERROR "Turn warnings of the project's own targets into errors" OFF)

function(gameui_warnings)
    cmake_parse_arguments(GW "CONVERSION" "" "" ${ARGN})
    if(NOT CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        return()
    endif()
    set(flags -Wall -Wextra -Wshadow -Wno-unused-parameter)
    if(GW_CONVERSION)
        list(APPEND flags -Wconversion)
    endif()
    if(GAMEUI_WERROR)
        list(APPEND flags -Werror)
    endif()
    foreach(target IN LISTS GW_UNPARSED_ARGUMENTS)
        target_compile_options(${target} PRIVATE ${flags})
    endforeach()
endfunction()
