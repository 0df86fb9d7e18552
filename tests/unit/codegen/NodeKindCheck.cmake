# Shows that a node kind without a line in GenerateNode doesn't build: the generator's source is compiled against the
# list of tokens as it is, which must succeed, and against one with a further kind, which must be refused by its name.
#
#     cmake -DCOMPILER=... -DSOURCE=.../src -DSCRATCH=... -P NodeKindCheck.cmake

file(READ ${SOURCE}/frontend/Tokens.def tokens)

function(compile_generator tokens)
    file(WRITE ${SCRATCH}/frontend/Tokens.def "${tokens}")
    execute_process(COMMAND ${COMPILER} -std=c++20 -fsyntax-only -I${SCRATCH} -I${SOURCE}
                            ${SOURCE}/codegen/Expressions.cpp
                    RESULT_VARIABLE status ERROR_VARIABLE messages)
    set(status ${status} PARENT_SCOPE)
    set(messages "${messages}" PARENT_SCOPE)
endfunction()

compile_generator("${tokens}")
if(NOT status EQUAL 0)
    message(FATAL_ERROR "the generator doesn't compile with the list as it is:\n${messages}")
endif()

compile_generator("TOKEN(FURTHER_KIND, 1000, \"FURTHER_KIND\")\n${tokens}")
if(status EQUAL 0)
    message(FATAL_ERROR "a kind that GenerateNode doesn't name went unnoticed")
endif()
if(NOT messages MATCHES "FURTHER_KIND.*not handled in switch")
    message(FATAL_ERROR "the generator is refused for another reason:\n${messages}")
endif()
