# The project's ways of declaring a target: one folder, one target, naming what it links.
include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()

# A product folder as its users have it: programs and modules in bin/, data in prg/.
set(ORN_PRODUCT_DIR ${CMAKE_BINARY_DIR})
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${ORN_PRODUCT_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${ORN_PRODUCT_DIR}/bin)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN")

# The compiler cache keeps what was compiled with precompiled headers only when it is told to trust
# their macros and times.
find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

option(ORN_SANITIZE "Build with AddressSanitizer and UndefinedBehaviorSanitizer" OFF)
if(ORN_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined)
endif()

add_library(orn_warnings INTERFACE)
target_compile_options(orn_warnings INTERFACE -Wall -Wextra -Wconversion -Wshadow -Werror)
# Optimising, g++ 12 warns of these inside the standard library's strings and variants, where there
# is nothing to mend; the sanitizers look for the real ones.
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    target_compile_options(orn_warnings INTERFACE -Wno-restrict -Wno-maybe-uninitialized
                                                  -Wno-free-nonheap-object
                                                  -Wno-stringop-overflow -Wno-array-bounds)
endif()

# A wrong arrow between folders must fail to link, so no library may leave a symbol undefined.
# The sanitizers' own symbols are an exception: they come with the program.
if(NOT ORN_SANITIZE)
    add_link_options(LINKER:--no-undefined)
endif()

# orn_public_directories(<target> PUBLIC|INTERFACE <folders>...): where its users find headers, now
# and once installed: the headers are installed in the shape of the source tree.
set(ORN_INSTALL_INCLUDEDIR ${CMAKE_INSTALL_INCLUDEDIR}/orn)
function(orn_public_directories target scope)
    foreach(folder ${ARGN})
        file(RELATIVE_PATH relative ${PROJECT_SOURCE_DIR} ${folder})
        target_include_directories(${target} ${scope}
            $<BUILD_INTERFACE:${folder}>
            $<INSTALL_INTERFACE:${ORN_INSTALL_INCLUDEDIR}/${relative}>)
    endforeach()
endfunction()

# orn_exported(<target>...): what another project gets from find_package(OrnGlobal).
function(orn_exported)
    install(TARGETS ${ARGN} EXPORT OrnGlobal
            RUNTIME DESTINATION bin LIBRARY DESTINATION bin ARCHIVE DESTINATION lib)
endfunction()

# What nearly all sources include of the standard library.
set(ORN_STANDARD_HEADERS
    <algorithm> <array> <cmath> <functional> <map> <memory> <optional> <set> <span> <sstream>
    <string> <string_view> <unordered_map> <utility> <variant> <vector>)

# orn_precompiled_headers(<target> <name> <headers>...): compiles headers once for all targets that ask
# under the same name; most of the time that a source takes to compile goes into them. The first to
# ask owns them, so all must be compiled with its options and macros.
function(orn_precompiled_headers target name)
    set_target_properties(${target} PROPERTIES DEFINE_SYMBOL "") # It differs by target.
    get_property(owner GLOBAL PROPERTY ORN_PRECOMPILED_${name})
    if(owner)
        target_precompile_headers(${target} REUSE_FROM ${owner})
    else()
        target_precompile_headers(${target} PRIVATE ${ARGN})
        set_property(GLOBAL PROPERTY ORN_PRECOMPILED_${name} ${target})
    endif()
    # Some libraries ask for threads, which is a macro of all that share the headers.
    target_compile_options(${target} PRIVATE -pthread)
    # With this g++ tells the compiler cache which headers they were.
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        target_compile_options(${target} PRIVATE -fpch-preprocess)
    endif()
endfunction()

# orn_compiled_together(<target>): compiles several sources as one, for targets whose time goes into
# templates that each source would instantiate anew. Names are unique within such a target, then,
# and the debug build still compiles each source alone.
function(orn_compiled_together target)
    if(CMAKE_DISABLE_PRECOMPILE_HEADERS)
        return()
    endif()
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 8)
    # The warning takes the names between the braces of an unnamed namespace for a header's.
    if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
        target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
    endif()
endfunction()

# orn_host_library(<folder> [LINK <targets>...]): one folder of the host as target host_<folder>.
function(orn_host_library folder)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    add_library(host_${folder} SHARED ${sources})
    orn_public_directories(host_${folder} PUBLIC ${PROJECT_SOURCE_DIR}/host
                                                 ${PROJECT_SOURCE_DIR}/host/include)
    target_link_libraries(host_${folder} PUBLIC ${ARG_LINK} PRIVATE orn_warnings)
    orn_precompiled_headers(host_${folder} STANDARD ${ORN_STANDARD_HEADERS})
    orn_exported(host_${folder})
endfunction()

# orn_module(<name> [FOLDERS <folders>...] [LINK <targets>...]): a product module of its own,
# exporting only what is marked, as it does at home.
function(orn_module name)
    cmake_parse_arguments(ARG "" "" "FOLDERS;LINK" ${ARGN})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    foreach(folder ${ARG_FOLDERS})
        file(GLOB more CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
        list(APPEND sources ${more})
    endforeach()
    add_library(${name} SHARED ${sources})
    target_compile_definitions(${name} PRIVATE _AFXEXT)
    set_target_properties(${name} PROPERTIES CXX_VISIBILITY_PRESET hidden)
    orn_public_directories(${name} PUBLIC ${CMAKE_CURRENT_SOURCE_DIR} ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ARG_LINK} PRIVATE orn_warnings)
    orn_precompiled_headers(${name} STANDARD ${ORN_STANDARD_HEADERS})
    orn_exported(${name})
endfunction()

# orn_test(<folder> [LINK <targets>...]): the tests of one folder as one program. Compiling
# them takes longer than running them, so they are not optimised.
function(orn_test folder)
    cmake_parse_arguments(ARG "" "" "LINK" ${ARGN})
    string(REPLACE "/" "_" suffix ${folder})
    file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${folder}/*.cpp)
    add_executable(test_${suffix} ${sources})
    target_include_directories(test_${suffix} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
    target_compile_options(test_${suffix} PRIVATE $<$<CONFIG:Release,RelWithDebInfo>:-O0>)
    target_link_libraries(test_${suffix} PRIVATE ${ARG_LINK} GTest::gtest_main GTest::gmock
                                                 orn_warnings)
    orn_precompiled_headers(test_${suffix} TESTS ${ORN_STANDARD_HEADERS}
                            <filesystem> <fstream> <gmock/gmock.h> <gtest/gtest.h>)
    orn_compiled_together(test_${suffix})
    gtest_discover_tests(test_${suffix} DISCOVERY_MODE PRE_TEST)
endfunction()
