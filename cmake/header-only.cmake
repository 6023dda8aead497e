# gameui_header_only(<package> <target> <folder>): a header-only library from Debian (CLI11, nlohmann-json)
# for the tools, as the imported <target>. A native build takes the library's CMake package. A cross build
# cannot: the package lies outside the target's root, and adding the build machine's /usr/include would put
# its C library before the target's. The headers are portable, so a cross build sees only the library's
# own <folder>, through a link in the build tree.
function(gameui_header_only package target folder)
    if(NOT CMAKE_CROSSCOMPILING)
        find_package(${package} CONFIG REQUIRED)
        return()
    endif()
    if(NOT EXISTS /usr/include/${folder})
        message(FATAL_ERROR "${package} not found in /usr/include/${folder}: install its Debian package")
    endif()
    set(headers ${CMAKE_BINARY_DIR}/host-headers)
    file(MAKE_DIRECTORY ${headers})
    file(CREATE_LINK /usr/include/${folder} ${headers}/${folder} SYMBOLIC)
    add_library(${target} INTERFACE IMPORTED)
    set_target_properties(${target} PROPERTIES INTERFACE_INCLUDE_DIRECTORIES ${headers})
endfunction()
