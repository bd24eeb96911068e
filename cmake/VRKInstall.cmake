# Install rules: both libraries, the public headers (flat, under include/VRKLnuBasicUtils),
# a CMake package and a pkg-config file.
include(CMakePackageConfigHelpers)

set(VRK_INCLUDE_SUBDIR ${CMAKE_INSTALL_INCLUDEDIR}/VRKLnuBasicUtils)
set(VRK_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VRKLnuBasicUtils)

foreach(target IN ITEMS VRKBas VRKLnuBasicUtils)
  target_include_directories(${target} INTERFACE
                             $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endforeach()

install(TARGETS VRKBas VRKLnuBasicUtils EXPORT VRKLnuBasicUtilsTargets
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
get_property(vrk_headers GLOBAL PROPERTY VRK_PUBLIC_HEADERS)
install(FILES ${vrk_headers} DESTINATION ${VRK_INCLUDE_SUBDIR})
install(EXPORT VRKLnuBasicUtilsTargets NAMESPACE VRKLnuBasicUtils::
        DESTINATION ${VRK_CMAKE_DIR})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/VRKLnuBasicUtilsConfig.cmake.in
                              ${PROJECT_BINARY_DIR}/VRKLnuBasicUtilsConfig.cmake
                              INSTALL_DESTINATION ${VRK_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/VRKLnuBasicUtilsConfigVersion.cmake
                                 COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/VRKLnuBasicUtilsConfig.cmake
              ${PROJECT_BINARY_DIR}/VRKLnuBasicUtilsConfigVersion.cmake
        DESTINATION ${VRK_CMAKE_DIR})

configure_file(${PROJECT_SOURCE_DIR}/cmake/VRKLnuBasicUtils.pc.in
               ${PROJECT_BINARY_DIR}/VRKLnuBasicUtils.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/VRKLnuBasicUtils.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
