#include "fuzzHost.h"

#include "mel/interpreter.h"
#include "messages.h"
#include "tools/idleQueue.h"
#include "tools/tools.h"
#include "types/error.h"

#include <cstdio>
#include <cstdlib>

namespace fuzzing {

FuzzHost::FuzzHost(const std::string& preparation)
{
    session.messages().setSink([](host::Messages::Kind, const std::string&) {});
    try {
        session.mel().execute(preparation);
        idle();
    } catch (const host::Error& error) {
        std::fprintf(stderr, "the target cannot be prepared: %s\n", error.what());
        std::abort();
    }
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
