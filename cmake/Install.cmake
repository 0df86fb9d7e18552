# What is installed where, and the Debian package (cpack in a build folder; scripts/build-package.sh does all of it).
include(GNUInstallDirs)

set(NORVANE_COMPILER_NAME "compiler" CACHE STRING "The compiler's name where it is installed; norvane finds it as `compiler` or `norvane-compiler`")

install(PROGRAMS $<TARGET_FILE:compiler> DESTINATION ${CMAKE_INSTALL_BINDIR} RENAME ${NORVANE_COMPILER_NAME})
# Beside each other as in the repository, since the examples name what they take of share/ by its way.
install(DIRECTORY examples share DESTINATION ${CMAKE_INSTALL_DATADIR}/norvane PATTERN man EXCLUDE PATTERN report EXCLUDE)
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
string(TOUPPER ${NORVANE_COMPILER_NAME} NORVANE_COMPILER_TITLE)
string(REPLACE "-" "\\-" NORVANE_COMPILER_PAGE ${NORVANE_COMPILER_NAME})
configure_file(share/man/compiler.1.in ${PROJECT_BINARY_DIR}/man/${NORVANE_COMPILER_NAME}.1 @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/man/${NORVANE_COMPILER_NAME}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
if(TARGET norvane_program)
    install(TARGETS norvane_program RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(DIRECTORY ${NORVANE_PAGES_FOLDER}/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 FILES_MATCHING PATTERN "*.1")
    install(FILES ${NORVANE_PAGES_FOLDER}/norvane.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
            RENAME norvane)
    install(FILES ${NORVANE_PAGES_FOLDER}/_norvane DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME norvane)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "compiler and desk tools for Structured Text (IEC 61131-3)")
set(CPACK_PACKAGE_DESCRIPTION "norvane-compiler makes assembler text and debug files for a stack machine
from Structured Text sources and a target description. norvane checks, runs,
tests and reports what it made, on the desk and in CI.")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Norvane developers <developers@norvane.invalid>")
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
# What a package of the distribution needs besides, made compressed and without a date of its own.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebianFiles.cmake)
include(CPack)
