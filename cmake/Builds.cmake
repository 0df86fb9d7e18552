# How everything is compiled and linked: warnings, hardening, the static compiler and the profile-guided one.
include(CheckCXXCompilerFlag)
include(CheckCXXSourceCompiles)

option(NORVANE_WERROR "Warnings fail the build, as in test.sh" OFF)
option(NORVANE_STATIC "Link the compiler statically where the system can; it starts in two thirds of the time" OFF)
set(NORVANE_PROFILE "" CACHE STRING "generate: instrument the compiler; use: optimise by the profile; count: coverage; empty: none of it")

add_compile_options(-Wall -Wextra -Wpedantic)
# g++ 12 warns of an overlap inside std::string's operator+ that can't be: a fault of that compiler alone.
add_compile_options($<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
if(NORVANE_WERROR)
    add_compile_options(-Werror)
endif()

# Sanitizers check the same and more, and don't go together with a fortified C library. Windows programs are built
# position-independent anyway; the rest is for ELF.
if(NOT CMAKE_CXX_FLAGS MATCHES "-fsanitize" AND NOT WIN32)
    # Programs and the libraries inside them; a module that others load is position-independent in its own way.
    set(is_program_code $<NOT:$<STREQUAL:$<TARGET_PROPERTY:TYPE>,MODULE_LIBRARY>>)
    add_compile_options($<${is_program_code}:-fPIE> -fstack-protector-strong)
    add_link_options($<$<STREQUAL:$<TARGET_PROPERTY:TYPE>,EXECUTABLE>:-pie> -Wl,-z,relro -Wl,-z,now)
    # Fortified calls need an optimiser, and some compilers bring a level of their own.
    add_compile_options($<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE> $<$<NOT:$<CONFIG:Debug>>:-D_FORTIFY_SOURCE=2>)
    check_cxx_compiler_flag(-fcf-protection NORVANE_HAS_CF_PROTECTION)
    if(NORVANE_HAS_CF_PROTECTION)
        add_compile_options(-fcf-protection)
    endif()
endif()

set(NORVANE_STATIC_LINK_OPTIONS "")
if(NORVANE_STATIC)
    set(CMAKE_REQUIRED_FLAGS -fPIE)
    set(CMAKE_REQUIRED_LINK_OPTIONS -static-pie)
    check_cxx_source_compiles("#include <string>\nint main(int n, char**) { return static_cast<int>(std::string(n, ' ').size()); }"
                              NORVANE_CAN_LINK_STATICALLY)
    unset(CMAKE_REQUIRED_FLAGS)
    unset(CMAKE_REQUIRED_LINK_OPTIONS)
    if(NORVANE_CAN_LINK_STATICALLY)
        set(NORVANE_STATIC_LINK_OPTIONS -static-pie -Wl,--gc-sections)
    else()
        message(STATUS "the compiler is linked dynamically: there is no static C or C++ library")
    endif()
endif()

# Counters lie beside the objects in this same build folder, where the second build finds them by itself.
if(NORVANE_PROFILE STREQUAL "generate")
    add_compile_options(-fprofile-generate)
    add_link_options(-fprofile-generate)
elseif(NORVANE_PROFILE STREQUAL "count")
    add_compile_options(--coverage)
    add_link_options(--coverage)
elseif(NORVANE_PROFILE STREQUAL "use")
    file(GLOB_RECURSE counters LIMIT_COUNT 1 ${PROJECT_BINARY_DIR}/CMakeFiles/*.gcda)
    if(NOT counters)
        message(FATAL_ERROR "there is no profile yet: scripts/build-with-profile.sh makes one and builds by it")
    endif()
    # What the training never reached has no profile; it is built for size, which is what is wanted.
    add_compile_options(-fprofile-use -Wno-missing-profile)
endif()
