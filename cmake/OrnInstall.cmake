# Installs the product folder as its users have it, bin/ and prg/, and what another module needs to
# build against it: headers in the shape of the source tree and a package for find_package(OrnGlobal).
include(CMakePackageConfigHelpers)

set(package_dir lib/cmake/OrnGlobal)

install(TARGETS orn RUNTIME DESTINATION bin)
orn_exported(orn_platform)
set_target_properties(orn_platform PROPERTIES EXPORT_NAME platform)

file(GLOB data CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/prg/*.json)
foreach(file ${data})
    get_filename_component(name ${file} NAME)
    configure_file(${file} ${ORN_PRODUCT_DIR}/prg/${name} COPYONLY)
endforeach()
install(FILES ${data} DESTINATION prg)

foreach(folder OrnCore OrnMfc OrnGlobal OrnBoard host)
    install(DIRECTORY ${folder} DESTINATION ${ORN_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
endforeach()
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})

install(EXPORT OrnGlobal NAMESPACE OrnGlobal:: DESTINATION ${package_dir}
        FILE OrnGlobalTargets.cmake)
configure_package_config_file(cmake/OrnGlobalConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/OrnGlobalConfig.cmake
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/OrnGlobalConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/OrnGlobalConfig.cmake
              ${CMAKE_CURRENT_BINARY_DIR}/OrnGlobalConfigVersion.cmake
        DESTINATION ${package_dir})
