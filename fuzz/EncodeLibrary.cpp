// Encodes a source from standard input as the text of a firmware library, to standard output: a seed of its fuzzer.

#include "files/Base64.h"

#include <iostream>
#include <iterator>
#include <string>

int main()
{
    const std::string source{std::istreambuf_iterator<char>(std::cin), {}};
    std::string text;
    Base64Encode(source, text);
    std::cout << text;
    return std::cout.flush() ? 0 : 1;
}
