#include "scene/sceneFile.h"

#include "graph/graphParts.h"
#include "messages.h"
#include "scene/defaultScene.h"
#include "scene/maReader.h"
#include "scene/maWriter.h"
#include "scene/sceneInfo.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/error.h"
#include "undo/undoQueue.h"
#include "view/drawRecord.h"
#include "view/viewport.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <unistd.h>

namespace host {

namespace {

namespace files = std::filesystem;

std::ifstream openForReading(const std::string& path)
{
    std::error_code ignored;
    std::ifstream input(path, std::ios::binary);
    if (!input || files::is_directory(path, ignored))
        throw Error("File not found: " + path);
    return input;
}

void tellWarnings(Session& session, const std::string& path, const MaReader& reader)
{
    for (const std::string& warning : reader.warnings())
        session.messages().warning(files::path(path).filename().string() + ": " + warning);
}

/// The file beside the target that is written first. It goes when it was not put in the target's place.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& target)
        : path(target + "." + std::to_string(::getpid()) + ".part")
    {}
    ~TemporaryFile()
    {
        std::error_code ignored;
        if (!moved)
            files::remove(path, ignored);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    void moveTo(const std::string& target)
    {
        std::error_code problem;
        const files::perms old = files::status(target, problem).permissions();
        if (!problem && files::exists(target, problem))
            files::permissions(path, old, problem);
        files::rename(path, target, problem);
        if (problem)
            throw Error("The file " + target + " cannot be written: " + problem.message());
        moved = true;
    }

    const std::string path;

private:
    bool moved = false;
};

/// Where a symbolic link leads, so that saving does not replace the link.
std::string behindLinks(const std::string& path)
{
    std::error_code problem;
    if (!files::is_symlink(path, problem))
        return path;
    const files::path target = files::canonical(path, problem);
    return problem ? path : target.string();
}

} // namespace

void openScene(Session& session, const std::string& path)
{
    std::ifstream input = openForReading(path);
    const UndoQueue::Suspend suspend(session.undo());
    Graph& graph = session.graph();
    SceneInfo info;
    MaReader reader(graph, info, input, path);
    std::unique_ptr<Graph::Contents> former = graph.takeContents();
    try {
        createDefaultNodes(graph);
        reader.read();
    } catch (...) {
        graph.putContents(std::move(former));
        throw;
    }
    session.selection().setActive({});
    session.drawing().clear();
    session.undo().flush();
    former.reset();
    session.sceneInfo() = std::move(info);
    session.sceneName = path;
    graph.modified = false;
    session.viewport().resetCamera();
    tellWarnings(session, path, reader);
}

void importScene(Session& session, const std::string& path, const std::string& nameSpace)
{
    std::ifstream input = openForReading(path);
    const UndoQueue::Suspend suspend(session.undo());
    Graph& graph = session.graph();
    const std::size_t before = graph.nodes().size();
    const bool modified = graph.modified;
    MaReadOptions options;
    options.import = true;
    options.nameSpace = nameSpace;
    MaReader reader(graph, session.sceneInfo(), input, path, options);
    try {
        reader.read();
    } catch (...) {
        while (graph.nodes().size() > before)
            graph.remove(*graph.nodes().back());
        graph.modified = modified;
        throw;
    }
    graph.modified = true;
    tellWarnings(session, path, reader);
}

void saveScene(Session& session, const std::string& path)
{
    const std::string target = behindLinks(path);
    TemporaryFile temporary(target);
    errno = 0;
    std::ofstream output(temporary.path, std::ios::binary | std::ios::trunc);
    if (output)
        writeScene(output, session.graph(), session.sceneInfo());
    output.close();
    if (!output)
        throw Error("The file " + path + " cannot be written: " + std::strerror(errno ? errno : EIO));
    temporary.moveTo(target);
    session.graph().modified = false;
}

} // namespace host
