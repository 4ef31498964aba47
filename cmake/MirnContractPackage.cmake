# Installs what a host author needs: find_package(mirn), link mirn::contract, include <mirn/plugin_interface.h>.
# A component of its own, so that it installs without the rest.
include(CMakePackageConfigHelpers)

set(contract_headers
  ServiceObject.h http_method.h plugin_extensions.h plugin_interface.h plugin_version.h service_exceptions.h text.h)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/mirn)

add_library(mirn::contract ALIAS mirn_contract)
set_target_properties(mirn_contract PROPERTIES EXPORT_NAME contract)
target_compile_features(mirn_contract INTERFACE cxx_std_17)

# Not the mirn folder itself: names as plain as text.h stay out of a host's include path.
install(TARGETS mirn_contract EXPORT mirn-targets COMPONENT contract
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${contract_headers} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/mirn COMPONENT contract)
install(EXPORT mirn-targets NAMESPACE mirn:: DESTINATION ${package_dir} COMPONENT contract)

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/mirn-config.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/mirn-config.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/mirn-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/mirn-config.cmake ${CMAKE_CURRENT_BINARY_DIR}/mirn-config-version.cmake
  DESTINATION ${package_dir} COMPONENT contract)
