# What `cmake --install` puts where, and how others find it: find_package(LUMFoundation) or pkg-config lumfoundation.
include(CMakePackageConfigHelpers)
set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/LUMFoundation)

install(TARGETS LUMPlatform LUMFoundation EXPORT LUMFoundationTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(DIRECTORY LUMPlatform LUMFoundation DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN *.h)
install(EXPORT LUMFoundationTargets NAMESPACE LUMFoundation:: DESTINATION ${package_folder})

configure_package_config_file(cmake/LUMFoundationConfig.cmake.in ${PROJECT_BINARY_DIR}/LUMFoundationConfig.cmake
    INSTALL_DESTINATION ${package_folder} NO_SET_AND_CHECK_MACRO)
# Until 1.0 a new minor version may break its callers, as the SONAME says too.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/LUMFoundationConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/LUMFoundationConfig.cmake ${PROJECT_BINARY_DIR}/LUMFoundationConfigVersion.cmake
    DESTINATION ${package_folder})

# Relative, so that an installation may be moved.
file(RELATIVE_PATH LUM_PC_TO_PREFIX /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
string(REGEX REPLACE "/$" "" LUM_PC_TO_PREFIX ${LUM_PC_TO_PREFIX})
configure_file(cmake/lumfoundation.pc.in ${PROJECT_BINARY_DIR}/lumfoundation.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/lumfoundation.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR})
