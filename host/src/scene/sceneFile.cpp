#include "scene/sceneFile.h"

#include "graph/graphParts.h"
#include "messages.h"
#include "scene/defaultScene.h"
#include "scene/maReader.h"
#include "scene/maWriter.h"
#include "scene/replacedFile.h"
#include "scene/sceneInfo.h"
#include "selection/selectionState.h"
#include "session.h"
#include "types/error.h"
#include "undo/undoQueue.h"
#include "view/drawRecord.h"
#include "view/viewport.h"

#include <filesystem>
#include <fstream>

namespace host {

namespace {

namespace files = std::filesystem;

std::ifstream openForReading(const std::string& path)
{
    std::error_code ignored;
    std::ifstream input(path, std::ios::binary);
    if (files::is_directory(path, ignored))
        throw Error(path + " is a folder, not a scene.");
    if (!input)
        throw Error("File not found: " + path);
    return input;
}

void tellWarnings(Session& session, const std::string& path, const MaReader& reader)
{
    for (const std::string& warning : reader.warnings())
        session.messages().warning(files::path(path).filename().string() + ": " + warning);
}

} // namespace

void openScene(Session& session, const std::string& path, std::atomic<std::uint64_t>* bytesRead)
{
    std::ifstream input = openForReading(path);
    const UndoQueue::Suspend suspend(session.undo());
    Graph& graph = session.graph();
    SceneInfo info;
    MaReadOptions options;
    options.bytesRead = bytesRead;
    MaReader reader(graph, info, input, path, options);
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
    ReplacedFile file(path);
    writeScene(file.stream(), session.graph(), session.sceneInfo());
    file.commit();
    session.graph().modified = false;
}

} // namespace host
