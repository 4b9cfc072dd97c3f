#include "fuzzHost.h"

#include "mel/command.h"
#include "mel/interpreter.h"
#include "messages.h"
#include "support/paths.h"
#include "tools/idleQueue.h"
#include "tools/tools.h"
#include "types/error.h"

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace fuzzing {

namespace {

host::mel::Limits narrowLimits()
{
    host::mel::Limits limits;
    limits.steps = 5000;
    limits.unwritten = 1 << 18;
    limits.points = 2000;
    limits.outside = false;
    return limits;
}

} // namespace

FuzzHost::FuzzHost(const std::string& preparation)
{
    session.messages().setSink([](host::Messages::Kind, const std::string&) {});
    session.messages().setPrintSink([](const std::string&) {});
    try {
        session.mel().execute(preparation);
        idle();
    } catch (const host::Error& error) {
        std::fprintf(stderr, "the target cannot be prepared: %s\n", error.what());
        std::abort();
    }
    session.mel().limits = narrowLimits();
}

bool keepLoaded(const std::string& name)
{
    return dlopen(testing_support::libraryPath(name).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE) !=
           nullptr;
}

void FuzzHost::mel(const std::string& text)
{
    session.mel().run(text);
    idle();
}

void FuzzHost::idle()
{
    session.tools().idle().run();
}

} // namespace fuzzing
