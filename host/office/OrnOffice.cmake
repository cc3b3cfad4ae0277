# The module that drives LibreOffice, where its SDK is installed. Everything else works without.
foreach(found ORN_SOFFICE ORN_CPPUMAKER)
    if(${found} AND NOT EXISTS ${${found}})
        unset(${found} CACHE) # it was removed since
    endif()
endforeach()
find_program(ORN_SOFFICE soffice)
if(NOT ORN_SOFFICE)
    return()
endif()
get_filename_component(office_program ${ORN_SOFFICE} REALPATH)
get_filename_component(office_programs ${office_program} DIRECTORY)
get_filename_component(office_sdk ${office_programs}/../sdk ABSOLUTE)
find_program(ORN_CPPUMAKER cppumaker PATHS ${office_sdk}/bin NO_DEFAULT_PATH)
if(NOT ORN_CPPUMAKER)
    return()
endif()

# The interfaces as C++ headers.
set(office_headers ${CMAKE_CURRENT_BINARY_DIR}/office)
set(office_types ${office_programs}/types.rdb ${office_programs}/types/offapi.rdb)
add_custom_command(OUTPUT ${office_headers}/stamp
    COMMAND ${ORN_CPPUMAKER} -Gc -O${office_headers} ${office_types}
    COMMAND ${CMAKE_COMMAND} -E touch ${office_headers}/stamp
    DEPENDS ${office_types}
    COMMENT "Generating the headers of LibreOffice's interfaces")

file(GLOB office_sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/office/*.cpp)
add_library(host_office MODULE ${office_sources} ${office_headers}/stamp)
target_include_directories(host_office PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_include_directories(host_office SYSTEM PRIVATE ${office_headers} ${office_sdk}/include)
target_compile_definitions(host_office PRIVATE LINUX UNX CPPU_ENV=gcc3
                                               ORN_OFFICE_PROGRAMS="${office_programs}")
# Objects of the other program have types that only the bridge to it knows.
if(ORN_SANITIZE)
    target_compile_options(host_office PRIVATE -fno-sanitize=vptr)
endif()
target_link_directories(host_office PRIVATE ${office_sdk}/lib ${office_programs})
target_link_libraries(host_office PRIVATE uno_cppuhelpergcc3 uno_cppu uno_salhelpergcc3 uno_sal
                                          orn_warnings)
set_target_properties(host_office PROPERTIES
    BUILD_RPATH ${office_programs} INSTALL_RPATH "$ORIGIN;${office_programs}")
install(TARGETS host_office LIBRARY DESTINATION bin)
# What loads it comes with it, in the build as in the product folder.
add_dependencies(host_excel host_office)
