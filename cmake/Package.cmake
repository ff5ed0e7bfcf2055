# The CMake package ZanBench: find_package(ZanBench) gives ZanBench::ZanBenchWindow, ZanBench::Trellis2 and the rest.
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/ZanBench)
configure_package_config_file(cmake/ZanBenchConfig.cmake.in ${CMAKE_BINARY_DIR}/ZanBenchConfig.cmake
                              INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${CMAKE_BINARY_DIR}/ZanBenchConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_BINARY_DIR}/ZanBenchConfig.cmake ${CMAKE_BINARY_DIR}/ZanBenchConfigVersion.cmake
        DESTINATION ${package_folder})
install(EXPORT ZanBench NAMESPACE ZanBench:: FILE ZanBenchTargets.cmake DESTINATION ${package_folder})
install(FILES LICENSE LICENSE.GPL-3 README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
