// Prints the source that belongs to a seed:   generate_program SEED

#include "Decisions.h"
#include "ProgramGenerator.h"

#include <cstdlib>
#include <iostream>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "usage: generate_program SEED\n";
        return 2;
    }
    CDecisions decisions(std::strtoull(argv[1], nullptr, 10));
    std::cout << GenerateProgram(decisions);
}
