# Installs a build into a fresh prefix (or takes a prefix already filled, such as an unpacked Debian
# package), then builds and runs a game's programs against it as a game team would: tests/consumer with
# find_package(gameui) and with pkg-config, the installed uilint, and where the SDL2 services are
# installed the tutorial's program and the README's game loop, off screen.
#   cmake -DSOURCE_DIR=<sources> -DWORK_DIR=<scratch> -DGENERATOR=<generator>
#         (-DBUILD_DIR=<build> | -DPREFIX=<installed root>)
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
if(PREFIX)
    set(prefix "${PREFIX}")
else()
    set(prefix "${WORK_DIR}/prefix")
    run("install" ${CMAKE_COMMAND} --install "${BUILD_DIR}" --prefix "${prefix}")
endif()
file(GLOB_RECURSE package "${prefix}/lib/*/gameuiConfig.cmake")
get_filename_component(package "${package}" DIRECTORY)
get_filename_component(libdir "${package}/../.." ABSOLUTE)

set(options -G "${GENERATOR}" -DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER})
if(TOOLCHAIN)
    # A cross build looks for packages only inside the target's root, so the package is named directly.
    list(APPEND options -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -Dgameui_DIR=${package})
else()
    list(APPEND options -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_PREFIX_PATH=${prefix}
         -DCMAKE_FIND_PACKAGE_NO_PACKAGE_REGISTRY=ON)
endif()

# Configures and builds the CMake project in `dir` into WORK_DIR/<name>, checking that it took the
# installed package.
function(build_with_cmake name dir)
    run("configuring ${name}" ${CMAKE_COMMAND} -S "${dir}" -B "${WORK_DIR}/${name}" ${options})
    file(STRINGS "${WORK_DIR}/${name}/CMakeCache.txt" found REGEX "^gameui_DIR:")
    if(NOT found MATCHES "=${package}$")
        message(FATAL_ERROR "find_package(gameui) did not take the installed package ${package}: ${found}")
    endif()
    run("building ${name}" ${CMAKE_COMMAND} --build "${WORK_DIR}/${name}")
endfunction()

build_with_cmake(game "${SOURCE_DIR}/tests/consumer")
if(TOOLCHAIN)
    file(COPY "${prefix}/bin/gameui.dll" DESTINATION "${WORK_DIR}/game") # shipped beside the game
    run("running the game" ${EMULATOR} "${WORK_DIR}/game/gameui_consumer.exe")
    return()
endif()
run("running the game" "${WORK_DIR}/game/gameui_consumer")
file(WRITE "${WORK_DIR}/hud.ui" "hud = uiNonVisualWidget\n{\n    width = 800\n}\n")
run("running the installed uilint" "${prefix}/bin/uilint" "${WORK_DIR}/hud.ui")

# Without CMake: compiler flags from the installed pkg-config files, the library found at run time
# through LD_LIBRARY_PATH as a game's launcher would set it.
find_program(PKGCONF pkg-config REQUIRED)
set(ENV{PKG_CONFIG_PATH} "${libdir}/pkgconfig")
set(ENV{LD_LIBRARY_PATH} "${libdir}")
function(build_with_pkgconfig name modules)
    run("pkg-config ${modules}" ${PKGCONF} --cflags --libs ${modules})
    separate_arguments(flags UNIX_COMMAND "${output}")
    run("building ${name} with pkg-config" ${LAUNCHER} ${CXX} -std=c++17 ${ARGN} ${flags} -o "${WORK_DIR}/${name}")
endfunction()
build_with_pkgconfig(game-pc "gameui;gameui-testkit" "${SOURCE_DIR}/tests/consumer/game.cpp")
run("running the game built with pkg-config" "${WORK_DIR}/game-pc")

# The tutorial's program and the README's game loop (the tutorial's project with the README's main.cpp):
# every named block extracted, its asset commands run, built both ways, run off screen for 30 frames.
if(NOT EXISTS "${package}/gameuiSdlTargets.cmake")
    return()
endif()
set(ENV{SDL_VIDEODRIVER} dummy)
set(ENV{SDL_AUDIODRIVER} dummy)
function(check_program name)
    run("running ${name}" ${CMAKE_COMMAND} -E chdir "${WORK_DIR}/${name}-src" ${ARGN} 30)
    if(NOT output STREQUAL "")
        message(FATAL_ERROR "${name} said:\n${output}")
    endif()
endfunction()
set(tutorial "${WORK_DIR}/tutorial-src")
run("extracting the tutorial" awk -v dir=${tutorial} -f "${SOURCE_DIR}/cmake/extract-blocks.awk"
    "${SOURCE_DIR}/docs/tutorial.md")
run("the tutorial's asset commands" ${CMAKE_COMMAND} -E chdir "${tutorial}" sh assets.sh)
file(COPY "${tutorial}/" DESTINATION "${WORK_DIR}/readme-src")
run("extracting the README" awk -v dir=${WORK_DIR}/readme-src -f "${SOURCE_DIR}/cmake/extract-blocks.awk"
    "${SOURCE_DIR}/README.md")
foreach(name tutorial readme)
    build_with_cmake(${name} "${WORK_DIR}/${name}-src")
    check_program(${name} "${WORK_DIR}/${name}/mygame")
    file(GLOB sources "${WORK_DIR}/${name}-src/*.cpp")
    build_with_pkgconfig(${name}-pc gameui-sdl ${sources})
    check_program(${name} "${WORK_DIR}/${name}-pc")
endforeach()
