// A command without a syntax: it goes through its arguments one by one.

#include <maya/MArgList.h>
#include <maya/MDoubleArray.h>
#include <maya/MFnPlugin.h>
#include <maya/MPxCommand.h>
#include <maya/MStringArray.h>

namespace {

/// words: returns each argument as text; of one that is no single value, how many values it holds.
class WordsCommand : public MPxCommand {
public:
    static void* creator() { return new WordsCommand; }

    MStatus doIt(const MArgList& args) override
    {
        MStringArray seen;
        for (unsigned int i = 0; i < args.length(); ++i) {
            MString text;
            if (!args.get(i, text)) {
                unsigned int next = i;
                MStringArray values;
                args.get(next, values);
                text = MString("array of ") + static_cast<double>(values.length());
                if (next != i + 1)
                    return MStatus::kFailure;
            }
            seen.append(text);
        }
        setResult(seen);
        return MStatus::kSuccess;
    }
};

} // namespace

MStatus initializePlugin(MObject object)
{
    return MFnPlugin(object).registerCommand("words", WordsCommand::creator);
}

MStatus uninitializePlugin(MObject object)
{
    return MFnPlugin(object).deregisterCommand("words");
}
