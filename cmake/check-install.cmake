# Installs a build into a fresh prefix, then configures, builds and runs the game program of
# tests/consumer against it, finding the library only through find_package(gameui).
#   cmake -DBUILD_DIR=<build> -DSOURCE_DIR=<sources> -DWORK_DIR=<scratch> -DGENERATOR=<generator>
#         [-DCXX=<compiler>] [-DLAUNCHER=<ccache>] [-DTOOLCHAIN=<file> -DEMULATOR=<runner>]
#         -P check-install.cmake
cmake_minimum_required(VERSION 3.16)

function(run what)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE out)
    if(NOT rc EQUAL 0)
        message(FATAL_ERROR "${what} failed (${rc}):\n${out}")
    endif()
    set(output "${out}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE "${WORK_DIR}")
set(prefix "${WORK_DIR}/prefix")
set(package "${prefix}/lib/cmake/gameui")
run("install" ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}")

set(options -G "${GENERATOR}" -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
if(TOOLCHAIN)
    # A cross build looks for packages only inside the target's root, so the package is named directly.
    list(APPEND options -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -Dgameui_DIR=${package})
else()
    list(APPEND options -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${prefix}
         -DCMAKE_FIND_PACKAGE_NO_PACKAGE_REGISTRY=ON)
endif()
run("configuring the game" ${CMAKE_COMMAND} -S "${SOURCE_DIR}/tests/consumer" -B "${WORK_DIR}/game" ${options})
file(STRINGS "${WORK_DIR}/game/CMakeCache.txt" found REGEX "^gameui_DIR:")
if(NOT found MATCHES "=${package}$")
    message(FATAL_ERROR "find_package(gameui) did not take the installed package: ${found}")
endif()
run("building the game" ${CMAKE_COMMAND} --build "${WORK_DIR}/game")
if(TOOLCHAIN)
    file(COPY "${prefix}/bin/gameui.dll" DESTINATION "${WORK_DIR}/game") # shipped beside the game
endif()
file(GLOB game "${WORK_DIR}/game/gameui_consumer*")
run("running the game" ${EMULATOR} ${game})
message(STATUS "${output}")
