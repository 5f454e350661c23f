# Installation of the library, its header and the command, and the archives that `cpack` makes.
include(CMakePackageConfigHelpers)

install(TARGETS scan695 EXPORT scan695Targets
    PUBLIC_HEADER DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
if(SCAN695_COMMAND)
    install(TARGETS scan695_cli)
endif()
install(EXPORT scan695Targets NAMESPACE scan695:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/scan695)
configure_package_config_file(cmake/scan695Config.cmake.in scan695Config.cmake
    INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/scan695)
write_basic_package_version_file(scan695ConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/scan695Config.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/scan695ConfigVersion.cmake
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/scan695)

set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY ${PROJECT_DESCRIPTION})
set(CPACK_PACKAGE_VENDOR "The scan695 developers")
include(CPack)
