# Run by CPack over the tree that it is about to pack: programs stripped, manual pages compressed, with the two files that a Debian package
# has to bring, its list of changes and what is known of its licence.
set(root ${CPACK_TEMPORARY_DIRECTORY}/usr)
set(documents ${root}/share/doc/norvane)

file(MAKE_DIRECTORY ${documents})
file(WRITE ${documents}/changelog "norvane (${CPACK_PACKAGE_VERSION}) stable; urgency=low

  * What has changed is told in CHANGELOG.md.

 -- The Norvane developers <developers@norvane.invalid>  Sun, 22 Nov 2026 00:00:00 +0000
")
file(WRITE ${documents}/copyright "Norvane, a compiler and desk tools for Structured Text.
The owner has not chosen a licence yet: all rights are reserved.
")
file(GLOB programs ${root}/bin/*)
execute_process(COMMAND strip ${programs} COMMAND_ERROR_IS_FATAL ANY)
file(GLOB pages ${root}/share/man/man1/*.1)
foreach(file IN LISTS pages ITEMS ${documents}/changelog)
    execute_process(COMMAND gzip -9nf ${file} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
