# What is installed, in three components (runtime, development, command), and what `cpack` packs.
# An installation can be moved: the command finds the library beside it, and the files for CMake and
# pkg-config find the prefix from where they lie.
include(CMakePackageConfigHelpers)

set(config_directory ${CMAKE_INSTALL_LIBDIR}/cmake/scan695)
set(doc_directory ${CMAKE_INSTALL_DATADIR}/doc)

install(TARGETS scan695 EXPORT scan695Targets
    RUNTIME COMPONENT runtime
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
    PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT scan695Targets NAMESPACE scan695:: DESTINATION ${config_directory}
    COMPONENT development)
configure_package_config_file(cmake/scan695Config.cmake.in scan695Config.cmake
    INSTALL_DESTINATION ${config_directory})
write_basic_package_version_file(scan695ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/scan695Config.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/scan695ConfigVersion.cmake
    DESTINATION ${config_directory} COMPONENT development)
if(WIN32)
    install(FILES cmake/exports.def DESTINATION ${CMAKE_INSTALL_LIBDIR} RENAME scan695.def
        COMPONENT development)
endif()

file(RELATIVE_PATH SCAN695_PC_PREFIX
    /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/scan695.pc.in scan695.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/scan695.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

if(NOT WIN32)
    install(DIRECTORY ${PROJECT_BINARY_DIR}/manual/man3 DESTINATION ${CMAKE_INSTALL_MANDIR}
        COMPONENT development)
endif()
if(SCAN695_COMMAND)
    file(RELATIVE_PATH to_library /prefix/${CMAKE_INSTALL_BINDIR} /prefix/${CMAKE_INSTALL_LIBDIR})
    set_target_properties(scan695_cli PROPERTIES INSTALL_RPATH "$ORIGIN/${to_library}")
    install(TARGETS scan695_cli COMPONENT command)
    if(TARGET scan695_manual)
        set(made ${PROJECT_BINARY_DIR}/manual/made)
        set(zsh_directory site-functions)
        if(SCAN695_DEBIAN)
            set(zsh_directory vendor-completions)
        endif()
        install(DIRECTORY ${made}/man1 DESTINATION ${CMAKE_INSTALL_MANDIR} COMPONENT command)
        install(FILES ${made}/bash/scan695 COMPONENT command
            DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
        install(FILES ${made}/zsh/_scan695 COMPONENT command
            DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/${zsh_directory})
    endif()
endif()

include(cmake/cpack.cmake)
