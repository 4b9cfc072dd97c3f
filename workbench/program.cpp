#include "program.h"

#include "mel/interpreter.h"
#include "messages.h"
#include "plugInPath.h"
#include "plugins/pluginRegistry.h"
#include "render/picture.h"
#include "scene/replacedFile.h"
#include "scene/sceneFile.h"
#include "tools/idleQueue.h"
#include "tools/tools.h"
#include "trace.h"
#include "types/error.h"
#include "view/viewport.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <iterator>

namespace workbench {

namespace {

/// All of it; the second time there is nothing left, as of any stream.
std::string standardInput()
{
    return {std::istreambuf_iterator<char>(std::cin), std::istreambuf_iterator<char>()};
}

} // namespace

/// The trace as a file, written line by line so that it is complete up to a crash.
class Program::TraceFile {
public:
    explicit TraceFile(const std::string& name) : path(name), file(std::fopen(name.c_str(), "w"))
    {
        if (!file)
            throw host::Error("Cannot write '" + path + "': " + std::strerror(errno) + ".");
    }
    ~TraceFile() { std::fclose(file); }
    TraceFile(const TraceFile&) = delete;
    TraceFile& operator=(const TraceFile&) = delete;

    void write(const std::string& line)
    {
        std::fputs((line + "\n").c_str(), file);
        std::fflush(file);
    }
    void check() const
    {
        if (std::ferror(file) != 0)
            throw host::Error("Cannot write '" + path + "': the trace is incomplete.");
    }

private:
    std::string path;
    std::FILE* file;
};

Program::Program(const Options& asked) : options(asked)
{
    hostSession.viewport().width = options.width;
    hostSession.viewport().height = options.height;
    const std::string beside = builtPlugIn();
    if (!beside.empty())
        hostSession.plugins().addFolder(std::filesystem::path(beside).parent_path().string());
    if (progress.toTerminal())
        keepTerminalTidy();
    // Only a picture asks for it.
    if (!options.image.empty())
        hostSession.tools().pressWatcher = [this](int x, int y) { pressWatch.press(hostSession, x, y); };
}

void Program::keepTerminalTidy()
{
    hostSession.messages().setSink([this](host::Messages::Kind kind, const std::string& text) {
        const bool warning = kind == host::Messages::Kind::kWarning;
        progress.clear();
        std::fprintf(stderr, "// %s%s //\n",
                     warning                                ? "Warning: "
                     : kind == host::Messages::Kind::kError ? "Error: "
                                                            : "",
                     text.c_str());
    });
    hostSession.messages().setPrintSink([this](const std::string& text) {
        progress.clear();
        const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
        if (std::fflush(stdout) != 0 || !written)
            throw host::Error(std::string("Cannot print: ") + std::strerror(errno) + ".");
    });
}

Program::~Program()
{
    hostSession.trace().setSink({});
    hostSession.tools().pressWatcher = {};
}

void Program::fail(const std::string& text)
{
    hasFailed = true;
    hostSession.messages().error(text);
}

template <class Step>
void Program::attempt(Step&& step)
{
    try {
        step();
    } catch (const std::exception& problem) {
        fail(problem.what());
    }
}

void Program::start()
{
    attempt([this] {
        openTrace();
        openScene();
        loadPlugIn();
        for (const Options::Task& task : options.tasks) {
            if (hostSession.quitting() || hasFailed)
                break;
            runTask(task);
        }
    });
}

void Program::finish()
{
    if (!hasFailed) {
        attempt([this] { writeImage(); });
        attempt([this] { saveScene(); });
    }
    hostSession.quit();
    attempt([this] {
        if (traceFile)
            traceFile->check();
    });
    // The program has quit: what plug-ins do while the session is taken down is no longer part of the run.
    hostSession.trace().setSink({});
    hostSession.messages().setSink([](host::Messages::Kind, const std::string&) {});
}

void Program::openTrace()
{
    if (options.trace.empty())
        return;
    traceFile = std::make_unique<TraceFile>(options.trace);
    hostSession.trace().setSink([this](const std::string& line) { traceFile->write(line); });
}

void Program::openScene()
{
    if (!options.scene.empty()) {
        std::error_code unknown;
        const auto size = std::filesystem::file_size(options.scene, unknown);
        const Progress::Work work(progress, "Opening " + options.scene, unknown ? 0 : size);
        host::openScene(hostSession, options.scene, &progress.done());
        hostSession.sceneName = options.scene;
    }
    idle();
}

void Program::loadPlugIn()
{
    if (options.noPlugIn)
        return;
    const std::string file = options.plugIn.empty() ? builtPlugIn() : options.plugIn;
    if (file.empty())
        throw host::Error("The plug-in morvane.so is not beside the program; name it with --plug-in.");
    hostSession.plugins().load(file);
    idle();
}

void Program::runTask(const Options::Task& task)
{
    const bool isFile = task.kind == Options::Task::Kind::kFile;
    const Progress::Work work(progress, isFile ? "Running " + task.value : "Running a command");
    if (isFile && task.value == "-")
        hostSession.mel().execute(standardInput(), "standard input");
    else if (isFile)
        hostSession.mel().source(task.value);
    else
        hostSession.mel().execute(task.value);
    idle();
}

void Program::idle()
{
    hostSession.tools().idle().run();
    // The messages have told what failed.
    hasFailed = hasFailed || hostSession.tools().idle().failures() > 0;
}

void Program::writeImage()
{
    const Progress::Work work(progress, "Drawing " + options.image);
    if (!options.image.empty())
        host::replaceFile(options.image, pngOf(renderPicture(hostSession, options.scale, &pressWatch)));
}

void Program::saveScene()
{
    const Progress::Work work(progress, "Saving " + options.save);
    if (!options.save.empty())
        host::saveScene(hostSession, options.save);
}

int runBatch(Program& program)
{
    program.start();
    program.finish();
    return program.failed() ? 1 : 0;
}

} // namespace workbench
