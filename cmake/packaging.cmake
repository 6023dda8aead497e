# Debian packages and a .tar.gz of the install components (make package). The Debian split is the usual
# one: the shared library alone (libgameui0), what builds against it (libgameui-dev), the SDL2 services
# with the SDL2 development packages they need (libgameui-sdl-dev), and the programs (gameui-tools).
set(CPACK_PACKAGE_NAME gameui)
set(CPACK_PACKAGE_VENDOR gameui)
set(CPACK_PACKAGE_CONTACT "gameui developers <gameui@example.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Retained-mode user-interface library for 2D games")
set(CPACK_PACKAGE_FILE_NAME gameui-${PROJECT_VERSION}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_COMPONENTS_ALL runtime dev sdl tools)
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/packaging-generator.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://example.org/gameui")
set(version "(= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libgameui0)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEV_PACKAGE_NAME libgameui-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libgameui0 ${version}")
set(CPACK_DEBIAN_SDL_PACKAGE_NAME libgameui-sdl-dev)
set(CPACK_DEBIAN_SDL_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_SDL_PACKAGE_DEPENDS "libgameui-dev ${version}, libsdl2-dev, libsdl2-image-dev, \
libsdl2-ttf-dev, libsdl2-mixer-dev, pkg-config, fonts-dejavu-core")
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME gameui-tools)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS "libgameui0 ${version}, libsdl2-2.0-0, libsdl2-image-2.0-0, \
libsdl2-ttf-2.0-0, libsdl2-mixer-2.0-0, fonts-dejavu-core, libc6, libstdc++6, libgcc-s1")
include(CPack)
