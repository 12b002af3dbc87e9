# Shared by the install test scripts: runs one step of the test, stops the test with the step's
# output when it fails, and hands its standard output to the caller as `out`.
function(run_step what)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
    if(NOT rc EQUAL 0)
        message(FATAL_ERROR "${what} failed (${rc}):\n${out}\n${err}")
    endif()
    message(STATUS "${what}: ok")
    set(out "${out}" PARENT_SCOPE)
endfunction()
