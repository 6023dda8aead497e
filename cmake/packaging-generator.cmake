# Read by cpack for each generator: the .tar.gz unpacks to include/, lib/, bin/ and share/ at its top,
# ready for any prefix, while the Debian packages install under /usr.
if(CPACK_GENERATOR STREQUAL "TGZ")
    set(CPACK_PACKAGING_INSTALL_PREFIX "")
endif()
