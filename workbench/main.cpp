#include "options.h"
#include "program.h"

#include <exception>
#include <iostream>

int main(int argc, char** argv)
{
    const workbench::ParseResult parsed = workbench::parseCommandLine(argc, argv);
    if (!parsed.proceed)
        return parsed.status;
    if (!parsed.options.batch) {
        std::cerr << "morvane-workbench: this build has no window yet; run it with --batch.\n";
        return 2;
    }
    try {
        workbench::Program program(parsed.options);
        return workbench::runBatch(program);
    } catch (const std::exception& problem) {
        std::cerr << "morvane-workbench: " << problem.what() << "\n";
        return 1;
    }
}
