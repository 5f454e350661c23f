# `cpack` gives one archive with everything in it; `cpack -G DEB` three Debian packages and the
# symbols that were stripped from them. The preset `deb` builds for the places of a Debian system.
set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGE_VENDOR "The scan695 developers")
set(CPACK_PACKAGE_CONTACT "The scan695 developers <developers@scan695.invalid>")
if(NOT SCAN695_DEBIAN)
    set(CPACK_STRIP_FILES ON)  # the Debian packages keep what is stripped in packages of its own
endif()
set(CPACK_THREADS 2)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_CURRENT_BINARY_DIR})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE ON)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libscan695-${PROJECT_VERSION_MAJOR})
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
"The library: it turns absolute object files of the TASKING tool chain for the
C166 family and for TriCore into STF, a structured text file, and FST, a symbol
database.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libscan695-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (= ${PROJECT_VERSION}-1)")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"The header of the library, and its files for CMake and pkg-config.")
set(CPACK_DEBIAN_COMMAND_PACKAGE_NAME scan695)
set(CPACK_DEBIAN_COMMAND_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_COMMAND_PACKAGE_DEPENDS
    "${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} (>= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_COMMAND_DESCRIPTION
"The command: it converts object files of the TASKING tool chain for the C166
family and for TriCore, and answers questions about the programs in them.")

# Every Debian package carries the change log and says what is known of the licence.
if(SCAN695_DEBIAN)
    set(components runtime:${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME} development:libscan695-dev)
    if(SCAN695_COMMAND)
        list(APPEND components command:scan695)
    endif()
    find_program(GZIP gzip REQUIRED)
    set(documents ${PROJECT_SOURCE_DIR}/packaging/copyright)
    foreach(pair CHANGELOG.md:changelog.gz packaging/changelog.Debian:changelog.Debian.gz)
        string(REGEX MATCH "(.*):(.*)" pair "${pair}")
        set(packed ${CMAKE_CURRENT_BINARY_DIR}/${CMAKE_MATCH_2})
        execute_process(COMMAND ${GZIP} -9nc ${PROJECT_SOURCE_DIR}/${CMAKE_MATCH_1}
            OUTPUT_FILE ${packed} COMMAND_ERROR_IS_FATAL ANY)
        list(APPEND documents ${packed})
    endforeach()
    foreach(entry IN LISTS components)
        string(REGEX MATCH "([a-z]+):(.*)" entry "${entry}")
        install(FILES ${documents}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${CMAKE_MATCH_2} COMPONENT ${CMAKE_MATCH_1})
    endforeach()
endif()
include(CPack)
