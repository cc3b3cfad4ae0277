# cmake -D BUILD=... -D WORK=... -D SAMPLE=... -D GENERATOR=... -P check_install.cmake
# Installs the build, moves the result, and builds and uses a module against it.
set(first ${WORK}/first)
set(prefix "${WORK}/moved here") # A blank in the path finds what is not quoted.

function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output
                    ERROR_VARIABLE output)
    if(NOT result EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}: ${result}\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect text)
    string(FIND "${output}" "${text}" place)
    if(place EQUAL -1)
        message(FATAL_ERROR "not printed: ${text}\n${output}")
    endif()
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${first})
file(RENAME ${first} ${prefix})
if(NOT EXISTS "${prefix}/prg/componentDefaultData.json")
    message(FATAL_ERROR "prg/ lacks the default component styles")
endif()

run(${CMAKE_COMMAND} -S ${CMAKE_CURRENT_LIST_DIR}/module -B ${WORK}/build -G ${GENERATOR}
    "-DCMAKE_PREFIX_PATH=${prefix}")
run(${CMAKE_COMMAND} --build ${WORK}/build)

run(${WORK}/build/tiny_host ${WORK}/build/TinyModule.arx ${SAMPLE})
expect("TINY 1.23")

run("${prefix}/bin/orn" area ${SAMPLE} --csv)
expect(",BOARD,true,")
