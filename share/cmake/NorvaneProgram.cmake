# Structured Text in a CMake build:
#
#   include(NorvaneProgram)
#   norvane_add_program(pump SOURCES ../lib/timers.st pump.st TARGET target.xml [OPTIONS -o1 -rs 512] [OUTPUT folder])
#
# makes pump.asm and pump.dbi in the folder (the current binary one by default), and again whenever one of the sources,
# the target description or a program of norvane changes. `pump` is a target that is part of `all`; its property
# NORVANE_OUTPUTS names the two files. Warnings and notes are shown; NORVANE_FLAGS, a list such as
# --werror;--notes=error, goes to every norvane build.
#
# Sources are named from the current source folder, and stand so in the outputs: what is built doesn't depend on where
# the project lies. norvane is looked for on the PATH; NORVANE_PROGRAM names another one.

find_program(NORVANE_PROGRAM norvane DOC "The program norvane")

# The compiler that norvane starts lies beside it; a new one builds everything anew.
function(_norvane_find_compiler result)
    get_filename_component(folder "${NORVANE_PROGRAM}" REALPATH)
    get_filename_component(folder "${folder}" DIRECTORY)
    set(found)
    foreach(name compiler norvane-compiler)
        if(NOT found AND EXISTS "${folder}/${name}")
            set(found "${folder}/${name}")
        endif()
    endforeach()
    set(${result} "${found}" PARENT_SCOPE)
endfunction()

function(norvane_add_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "TARGET;OUTPUT" "SOURCES;OPTIONS")
    if(NOT NORVANE_PROGRAM)
        message(FATAL_ERROR "norvane_add_program: there is no norvane on the PATH; NORVANE_PROGRAM names one")
    endif()
    if(NOT arg_SOURCES OR NOT arg_TARGET OR arg_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "norvane_add_program(${name} SOURCES ... TARGET ... [OPTIONS ...] [OUTPUT ...])")
    endif()
    if(NOT arg_OUTPUT)
        set(arg_OUTPUT "${CMAKE_CURRENT_BINARY_DIR}")
    endif()
    get_filename_component(output "${arg_OUTPUT}/${name}" ABSOLUTE BASE_DIR "${CMAKE_CURRENT_BINARY_DIR}")

    set(dependencies)
    foreach(file IN LISTS arg_SOURCES arg_TARGET)
        get_filename_component(absolute "${file}" ABSOLUTE)
        list(APPEND dependencies "${absolute}")
    endforeach()
    # "-rs 512" is one switch with its value; norvane takes words.
    set(options)
    foreach(option IN LISTS arg_OPTIONS)
        list(APPEND options "--compiler-option=${option}")
    endforeach()
    _norvane_find_compiler(compiler)

    add_custom_command(
        OUTPUT "${output}.asm" "${output}.dbi"
        COMMAND "${NORVANE_PROGRAM}" build ${arg_SOURCES} -i "${arg_TARGET}" -o "${output}" ${options} ${NORVANE_FLAGS}
        DEPENDS ${dependencies} "${NORVANE_PROGRAM}" ${compiler}
        WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}"
        COMMENT "Compiling ${name}"
        VERBATIM)
    add_custom_target(${name} ALL DEPENDS "${output}.asm" "${output}.dbi")
    set_target_properties(${name} PROPERTIES NORVANE_OUTPUTS "${output}.asm;${output}.dbi")
endfunction()
