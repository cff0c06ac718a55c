# `cmake --install` puts the dialog library and the two host libraries, with their public
# headers, into a prefix that a host project reads with find_package(KwMFCUI):
#   lib/                      libKwMFCUI.so, libKwiCAD.so, libKwAddinUtils.so
#   include/KwMFCUI/          the library's headers (one folder: they include each other by name)
#   include/KwiCAD/, include/KwAddinUtils/
#   lib/cmake/KwMFCUI/        the package: imported targets KwMFCUI::KwMFCUI, KwMFCUI::KwiCAD,
#                             KwMFCUI::KwAddinUtils; Qt 6 is found as their dependency
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(KW_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/KwMFCUI)

# The installed libraries find each other next to themselves.
set_target_properties(KwMFCUI KwiCAD KwAddinUtils PROPERTIES INSTALL_RPATH "$ORIGIN")

install(TARGETS KwMFCUI KwiCAD KwAddinUtils EXPORT KwMFCUITargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR}
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})

foreach(folder IN LISTS KWMFCUI_FOLDERS)
  file(GLOB folder_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/KwMFCUI/${folder}/*.h)
  install(FILES ${folder_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/KwMFCUI)
endforeach()
foreach(hostlib KwiCAD KwAddinUtils)
  file(GLOB host_headers CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/host/${hostlib}/include/*.h)
  install(FILES ${host_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/${hostlib})
endforeach()

install(EXPORT KwMFCUITargets NAMESPACE KwMFCUI:: DESTINATION ${KW_PACKAGE_DIR})
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/KwMFCUIConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/KwMFCUIConfig.cmake INSTALL_DESTINATION ${KW_PACKAGE_DIR})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/KwMFCUIConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/KwMFCUIConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/KwMFCUIConfigVersion.cmake DESTINATION ${KW_PACKAGE_DIR})
