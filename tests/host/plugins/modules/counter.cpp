// A well-behaved plug-in: a command with a syntax that can be undone, and a tool with its command.

#include <maya/MArgDatabase.h>
#include <maya/MArgList.h>
#include <maya/MEvent.h>
#include <maya/MFnPlugin.h>
#include <maya/MGlobal.h>
#include <maya/MPxCommand.h>
#include <maya/MPxContext.h>
#include <maya/MPxContextCommand.h>
#include <maya/MPxToolCommand.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MSyntax.h>

#include <stdexcept>

namespace {

/// What all commands of the plug-in count; fresh when the library is.
int total = 0;

/// counter: adds 1, or what -step says, and returns the new total. -throw and -fail end badly;
/// -names returns texts.
class CounterCommand : public MPxCommand {
public:
    static void* creator() { return new CounterCommand; }
    static MSyntax newSyntax()
    {
        MSyntax syntax;
        syntax.addFlag("-s", "-step", MSyntax::kLong);
        syntax.addFlag("-n", "-names");
        syntax.addFlag("-t", "-throw");
        syntax.addFlag("-f", "-fail");
        syntax.enableQuery();
        return syntax;
    }

    MStatus doIt(const MArgList& args) override
    {
        MStatus status;
        const MArgDatabase parser(syntax(), args, &status);
        if (!status)
            return status;
        query = parser.isQuery();
        if (parser.isFlagSet("-throw"))
            throw std::runtime_error("out of numbers");
        if (parser.isFlagSet("-fail"))
            return MStatus::kInvalidParameter;
        if (parser.isFlagSet("-names")) {
            MStringArray names;
            names.append("one");
            names.append("two");
            setResult(names);
            return MStatus::kSuccess;
        }
        parser.getFlagArgument("-step", 0, step);
        if (!query)
            total += step;
        setResult(total);
        return MStatus::kSuccess;
    }
    MStatus undoIt() override
    {
        total -= step;
        return MStatus::kSuccess;
    }
    MStatus redoIt() override
    {
        total += step;
        return MStatus::kSuccess;
    }
    bool isUndoable() const override { return !query; }

private:
    int step = 1;
    bool query = false;
};

/// lister: appends to its result, with -step 0 ints, 1 floats, 2 truths, 3 and 4 texts, 5 an array of texts,
/// 6 an int to a single one, 7 an int to texts. Its syntax is not registered.
class ListerCommand : public MPxCommand {
public:
    static void* creator() { return new ListerCommand; }
    MStatus doIt(const MArgList& args) override
    {
        MStatus status;
        const MArgDatabase parser(CounterCommand::newSyntax(), args, &status);
        if (!status)
            return status;
        append(parser.flagArgumentInt("-step", 0));
        return isCurrentResultArray() ? MStatus::kSuccess : MStatus::kFailure;
    }

private:
    template <class Value>
    static void both(const Value& first, const Value& second)
    {
        appendToResult(first);
        appendToResult(second);
    }
    static void append(int how)
    {
        const MString texts[] = {"x", "y"};
        switch (how) {
        case 0:
            return both(1, 2);
        case 1:
            return both(1.5, 2.5);
        case 2:
            return both(true, false);
        case 3:
            return both<const char*>("one", "two");
        case 4:
            return both(texts[0], texts[1]);
        case 5:
            return appendToResult(MStringArray(texts, 2));
        case 6:
            setResult(7);
            return appendToResult(8);
        default:
            setResult("seven");
            return appendToResult(8);
        }
    }
};

/// Adds 10: what one click of the tool leaves behind. One that is never finalised says so when it goes.
class ClickCommand : public MPxToolCommand {
public:
    static void* creator() { return new ClickCommand; }
    ~ClickCommand() override
    {
        if (!finalised)
            MGlobal::displayWarning("a click has come to nothing");
    }
    void callIt(const MString& text) { setCommandString(text); }
    MStatus doIt(const MArgList&) override { return redoIt(); }
    MStatus redoIt() override
    {
        total += 10;
        return MStatus::kSuccess;
    }
    MStatus undoIt() override
    {
        total -= 10;
        return MStatus::kSuccess;
    }
    bool isUndoable() const override { return true; }
    MStatus finalize() override
    {
        MArgList command;
        command.addArg(commandString());
        command.addArg(MString("-note"));
        command.addArg(MString("one click"));
        finalised = true;
        return doFinalize(command);
    }

private:
    bool finalised = false;
};

/// Shift forgets the command, control deletes it, the middle button gives it a name of its own.
class ClickContext : public MPxContext {
public:
    MStatus doPress(MEvent& event, MHWRender::MUIDrawManager&, const MHWRender::MFrameContext&) override
    {
        auto* command = static_cast<ClickCommand*>(newToolCommand());
        if (event.isModifierControl())
            delete command;
        if (event.isModifierControl() || event.isModifierShift())
            return MStatus::kSuccess;
        if (event.mouseButton() == MEvent::kMiddleMouse)
            command->callIt("click in the middle");
        command->redoIt();
        return command->finalize();
    }
    using MPxContext::doPress;
};

class ClickContextCommand : public MPxContextCommand {
public:
    static void* creator() { return new ClickContextCommand; }
    MPxContext* makeObj() override { return new ClickContext; }
};

} // namespace

MStatus initializePlugin(MObject object)
{
    MFnPlugin plugin(object, "the house", "2.1", "Any");
    const MStatus status =
        plugin.registerCommand("counter", CounterCommand::creator, CounterCommand::newSyntax);
    if (!status || !plugin.registerCommand("lister", ListerCommand::creator))
        return status;
    // Another set on the same plug-in says nothing about it.
    MFnPlugin second(object, "somebody else", "9");
    return second.registerContextCommand("clickContext", ClickContextCommand::creator, "click",
                                         ClickCommand::creator);
}

MStatus uninitializePlugin(MObject object)
{
    MFnPlugin plugin(object);
    const MStatus status = plugin.deregisterContextCommand("clickContext", "click");
    plugin.deregisterCommand("lister");
    const MStatus other = plugin.deregisterCommand("counter");
    return status ? other : status;
}
