#pragma once

#include <maya/MEvent.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>
#include <maya/MPxToolCommand.h>

#include <functional>
#include <string>
#include <vector>

namespace testing_support {

/// A tool that notes what it is called with, and does on a press what the test asks.
class NotingContext : public MPxContext {
public:
    NotingContext() { setTitleString("Noting Tool"); }
    static std::vector<std::string> notes;
    static std::function<void()> onPress;
    double strength = 1.0;

    using MPxContext::doDrag;
    using MPxContext::doPress;
    using MPxContext::doPtrMoved;
    using MPxContext::doRelease;

    void toolOnSetup(MEvent&) override;
    void toolOffCleanup() override { notes.push_back("off"); }
    MStatus doPress(MEvent& event) override;
    MStatus doDrag(MEvent& event) override { return note("drag", event); }
    MStatus doRelease(MEvent& event) override { return note("release", event); }
    MStatus doPtrMoved(MEvent& event) override { return note("move", event); }
    void completeAction() override { notes.push_back("complete"); }
    void deleteAction() override { notes.push_back("delete"); }
    void abortAction() override { notes.push_back("abort"); }
    void getClassName(MString& name) const override { name = "noting"; }
    MPxToolCommand* toolCommand() { return newToolCommand(); }

private:
    static MStatus note(const std::string& step, MEvent& event);
};

/// Makes, edits and queries noting tools; the flag -strength (-st).
class NotingCommand : public MPxContextCommand {
public:
    MPxContext* makeObj() override;
    MStatus appendSyntax() override;
    MStatus doEditFlags() override;
    MStatus doQueryFlags() override;

private:
    NotingContext* context = nullptr;
};

} // namespace testing_support
