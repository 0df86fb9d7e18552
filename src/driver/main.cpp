#include "driver/CompileDriver.h"
#include "semantics/Norvane.h"

#include <string>
#include <vector>

int main(int argc, char** argv)
{
    std::vector<std::string> arguments;
    for (int i = 1; i < argc; ++i) arguments.emplace_back(argv[i]);
    return CCompileDriver(g_Norvane).Run(arguments);
}
