#pragma once

#include "options.h"
#include "progress.h"
#include "render/pressWatch.h"
#include "session.h"

#include <memory>
#include <string>

namespace workbench {

/// One run of the workbench: a session, the scene that is open in it and what the command line asked for.
/// A front end drives it: batch calls start() and finish() at once, a window draws frames in between.
///
/// Failures are reported as error messages and remembered in failed(). A failed start ends there, and picture
/// and scene are not written then, so that a half-done scene never replaces a good file.
class Program {
public:
    explicit Program(const Options& options);
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Opens the scene, loads the plug-in, runs the scripts and commands in their order; the idle queue is
    /// run after each.
    void start();
    /// Writes the picture and the scene, then quits (exit callbacks run; plug-ins are not unloaded before).
    void finish();

    bool failed() const { return hasFailed; }
    host::Session& session() { return hostSession; }

private:
    class TraceFile;

    void openTrace();
    void openScene();
    void loadPlugIn();
    void runTask(const Options::Task& task);
    void idle();
    void writeImage();
    void saveScene();
    /// Runs a step; what it throws becomes an error message and a failure.
    template <class Step>
    void attempt(Step&& step);
    void fail(const std::string& text);

    /// Messages and prints take the line of progress away first.
    void keepTerminalTidy();

    Options options;
    Progress progress;
    std::unique_ptr<TraceFile> traceFile;
    host::Session hostSession;
    PressWatch pressWatch; ///< its nodes are let go of before the session ends
    bool hasFailed = false;
};

/// Runs the program without a window; the exit status.
int runBatch(Program& program);

} // namespace workbench
