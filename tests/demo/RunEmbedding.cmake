# Runs the embedding example with --quit and checks both its exit code and the line its page slot
# prints. Called as: cmake -DEXE=<program> -P RunEmbedding.cmake
execute_process(COMMAND ${EXE} --quit
    RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err TIMEOUT 100)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "exit ${result}\n--- stdout ---\n${out}\n--- stderr ---\n${err}")
endif()
if(NOT out MATCHES "selected Entrance \\(cam-1\\)")
    message(FATAL_ERROR "no selection line\n--- stdout ---\n${out}\n--- stderr ---\n${err}")
endif()
