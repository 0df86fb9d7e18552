# Scanner and parser are generated at build time from Scanner.re and Grammar.y.
find_package(BISON 3.8 REQUIRED)
find_program(RE2C re2c REQUIRED)

set(generated ${PROJECT_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${generated})

bison_target(Grammar ${PROJECT_SOURCE_DIR}/src/frontend/Grammar.y ${generated}/Grammar.cpp
             DEFINES_FILE ${generated}/Grammar.h
             REPORT_FILE ${generated}/Grammar.report
             VERBOSE ${generated}/Grammar.report
             COMPILE_FLAGS "-Wall -Werror")
add_custom_command(OUTPUT ${generated}/Scanner.cpp
                   COMMAND ${RE2C} -W -Werror -c --no-generation-date -o ${generated}/Scanner.cpp
                           ${PROJECT_SOURCE_DIR}/src/frontend/Scanner.re
                   DEPENDS ${PROJECT_SOURCE_DIR}/src/frontend/Scanner.re
                   VERBATIM)

target_sources(norvane_frontend PRIVATE ${generated}/Grammar.cpp ${generated}/Scanner.cpp)
target_include_directories(norvane_frontend PRIVATE ${generated})
