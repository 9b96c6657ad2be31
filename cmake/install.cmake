# Headers, libraries, the CMake package `xotypemgr` and the pkg-config file `xotypemgr`.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/xotypemgr)

install(TARGETS xotypemgr xotypemgr_static xointl xobase EXPORT xotypemgr
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT xotypemgr NAMESPACE xotypemgr:: FILE xotypemgr-targets.cmake
  DESTINATION ${package_dir})

set(include_dir ${CMAKE_INSTALL_INCLUDEDIR}/xotypemgr)
install(DIRECTORY inc/ DESTINATION ${include_dir} FILES_MATCHING PATTERN "*.hpp")
install(FILES
  base/bytes.hpp base/clock.hpp base/config.hpp base/export.hpp base/format.hpp base/mem_file.hpp
  base/number_format.hpp base/number_text.hpp base/option_word.hpp base/platform.hpp
  base/scalar_disk.hpp base/version.hpp base/wrapping.hpp
  DESTINATION ${include_dir}/base)
install(FILES
  intl/code_set.hpp intl/language.hpp intl/language_context.hpp intl/order_table.hpp
  intl/wide_list.hpp
  DESTINATION ${include_dir}/intl)

configure_package_config_file(cmake/xotypemgr-config.cmake.in xotypemgr-config.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(xotypemgr-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/xotypemgr-config.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/xotypemgr-config-version.cmake
  DESTINATION ${package_dir})

# The way from the file's own folder back to the prefix, so that a moved installation still works.
file(RELATIVE_PATH pc_prefix
  /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(cmake/xotypemgr.pc.in xotypemgr.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/xotypemgr.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
