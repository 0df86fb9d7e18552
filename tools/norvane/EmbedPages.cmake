# Makes a C++ source of pages, so that the program shows them without looking for files:
#   cmake -DOUTPUT=... -DPAGES=page.md,other.md -P EmbedPages.cmake
# Compilers need take no literal of more than 65,536 bytes, so a page is cut into pieces.
string(REPLACE "," ";" pages "${PAGES}")
set(text "#include \"norvane/MessagePages.h\"\n\nconst std::vector<std::string_view>& GetMessagePages()\n{\n")
string(APPEND text "    static const std::vector<std::string_view> pieces = {\n")
foreach(page IN LISTS pages)
    file(READ "${page}" content HEX)
    string(LENGTH "${content}" length)
    set(position 0)
    while(position LESS length)
        string(SUBSTRING "${content}" ${position} 8000 piece)
        string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" piece "${piece}")
        string(APPEND text "        \"${piece}\",\n")
        math(EXPR position "${position} + 8000")
    endwhile()
endforeach()
string(APPEND text "    };\n    return pieces;\n}\n")
file(WRITE "${OUTPUT}" "${text}")
