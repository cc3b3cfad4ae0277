# cmake -D BUILD=... -D WORK=... -D SAMPLE=... -D GENERATOR=... -P check_install.cmake
# Installs the build, moves the result, and builds and uses a module against it.
set(first ${WORK}/first)
set(prefix "${WORK}/moved here") # A blank in the path finds what is not quoted.

function(run)
    execute_process(COMMAND ${ARGN} COMMAND_ERROR_IS_FATAL ANY OUTPUT_VARIABLE output
                    ERROR_VARIABLE output)
    set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${first})
file(RENAME ${first} ${prefix})

run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/module -B ${WORK}/build -G ${GENERATOR}
    "-DCMAKE_PREFIX_PATH=${prefix}")
run(${CMAKE_COMMAND} --build ${WORK}/build)

run("${prefix}/bin/orn" area ${SAMPLE} --csv)
if(NOT output MATCHES "BOARD")
    message(FATAL_ERROR "the installed orn did not measure the sample:\n${output}")
endif()
