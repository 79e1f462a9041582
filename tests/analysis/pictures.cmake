# The committed pictures are those that the program draws.
file(MAKE_DIRECTORY ${FOLDER})
execute_process(COMMAND ${PROGRAM} ${ROOT}/examples/samples ${FOLDER} COMMAND_ERROR_IS_FATAL ANY)
file(GLOB drawn RELATIVE ${FOLDER} ${FOLDER}/formula-*.svg)
foreach(picture IN LISTS drawn)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${FOLDER}/${picture} ${ROOT}/docs/pictures/${picture}
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()
