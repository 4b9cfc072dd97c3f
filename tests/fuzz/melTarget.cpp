// Any text as a script: scanner, parser, interpreter, and the commands it comes upon, on a scene with a skin,
// a cluster and a blend shape; then everything is taken back and done again.
#include "fuzzHost.h"

#include "types/error.h"
#include "undo/undoQueue.h"

namespace {

const char* const kScene =
    "polyPlane -n sheet -sx 2 -sy 1; polyPlane -n smile -sx 2 -sy 1; joint -n hip; joint -n knee -p 1 0 0;"
    "skinCluster -n skin -tsb hip knee sheet; cluster -n lift sheet; blendShape -n face smile sheet;"
    "select -cl";

template <class Step>
void repeat(std::size_t count, Step&& step)
{
    try {
        for (std::size_t i = 0; i < count; ++i)
            step();
    } catch (const host::Error&) {
        // A step that the script itself made impossible.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzzing::FuzzHost host(kScene);
    host.session.undo().flush();
    host.mel(fuzzing::textOf(data, size));
    host::UndoQueue& undo = host.session.undo();
    repeat(undo.undoCount(), [&] { undo.undo(); });
    repeat(undo.redoCount(), [&] { undo.redo(); });
    return 0;
}
