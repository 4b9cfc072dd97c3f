// Any text as a scene file. What does not open leaves the scene as it was; what opens is saved, opens again
// and is saved alike.
#include "fuzzHost.h"

#include "graph/graph.h"
#include "scene/maWriter.h"
#include "scene/sceneFile.h"
#include "types/error.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>

#include <sys/mman.h>
#include <unistd.h>

namespace {

/// A file that is nowhere on disk.
class MemoryFile {
public:
    explicit MemoryFile(const std::string& text) : file(::memfd_create("scene", MFD_CLOEXEC))
    {
        if (::write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size()))
            std::abort();
    }
    ~MemoryFile() { ::close(file); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string path() const { return "/proc/self/fd/" + std::to_string(file); }

private:
    int file;
};

std::string saved(host::Session& session)
{
    std::ostringstream text;
    host::writeScene(text, session.graph(), session.sceneInfo());
    return text.str();
}

/// Why the text does not open; empty when it does.
std::string problem(host::Session& session, const std::string& text)
{
    const MemoryFile file(text);
    try {
        host::openScene(session, file.path());
    } catch (const host::Error& error) {
        return error.what();
    }
    return {};
}

[[noreturn]] void fail(const char* what, const std::string& first, const std::string& second)
{
    std::fprintf(stderr, "%s\n--- first\n%s\n--- second\n%s\n", what, first.c_str(), second.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzzing::FuzzHost host;
    const std::string former = saved(host.session);
    if (!problem(host.session, "//Maya ASCII 2022 scene\n" + fuzzing::textOf(data, size)).empty()) {
        if (saved(host.session) != former)
            fail("a file that does not open has changed the scene", former, saved(host.session));
        return 0;
    }
    const std::string once = saved(host.session);
    const std::string refusal = problem(host.session, once);
    if (!refusal.empty())
        fail("a saved scene does not open", once, refusal);
    if (saved(host.session) != once)
        fail("a scene that is opened and saved again differs", once, saved(host.session));
    return 0;
}
