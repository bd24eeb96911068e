# Install rules: the libraries, the public headers (flat, under include/VRKLnuBasicUtils), a
# CMake package whose components are VRKLnuBasicUtils and VRKLnuStore, and a pkg-config file
# for each of the two.
include(CMakePackageConfigHelpers)

set(VRK_INCLUDE_SUBDIR ${CMAKE_INSTALL_INCLUDEDIR}/VRKLnuBasicUtils)
set(VRK_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VRKLnuBasicUtils)

foreach(target IN ITEMS VRKBas VRKLnuBasicUtils VRKLnuStore)
  target_include_directories(${target} INTERFACE
                             $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endforeach()

install(TARGETS VRKBas VRKLnuBasicUtils VRKLnuStore EXPORT VRKLnuBasicUtilsTargets
        FILE_SET umbrella DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
        RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# The public headers are those that the folders declare in their header sets, installed flat.
get_property(vrk_folders GLOBAL PROPERTY VRK_FOLDERS)
foreach(folder IN LISTS vrk_folders)
  get_target_property(vrk_headers vrk_${folder} HEADER_SET)
  get_target_property(vrk_dir vrk_${folder} SOURCE_DIR)
  list(TRANSFORM vrk_headers PREPEND ${vrk_dir}/ REGEX "^[^/]")
  install(FILES ${vrk_headers} DESTINATION ${VRK_INCLUDE_SUBDIR})
endforeach()
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

foreach(package IN ITEMS VRKLnuBasicUtils VRKLnuStore)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/${package}.pc.in ${PROJECT_BINARY_DIR}/${package}.pc
                 @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${package}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
