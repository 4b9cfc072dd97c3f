#include "morvaneContextCommand.h"

#include "helperFunctions/ngLayers.h"
#include "morvaneContext/morvaneContext.h"
#include "report.h"
#include "weightModes/modeTable.h"

#include <cmath>
#include <maya/MGlobal.h>
#include <maya/MSelectionList.h>
#include <maya/MSyntax.h>

namespace {

struct Flag {
    const char* shortName;
    const char* longName;
    MSyntax::MArgType type;
};

const Flag kFlags[] = {
    {"-dfm", "-deformer", MSyntax::kString},
    {"-cmn", "-clampMin", MSyntax::kBoolean},
    {"-cmx", "-clampMax", MSyntax::kBoolean},
    {"-dw", "-displayWeights", MSyntax::kBoolean},
    {"-wmn", "-weightMin", MSyntax::kDouble},
    {"-wmx", "-weightMax", MSyntax::kDouble},
    {"-dp", "-displayPrecision", MSyntax::kUnsigned},
    {"-fs", "-fontSize", MSyntax::kUnsigned},
    {"-fop", "-fontOpacity", MSyntax::kDouble},
    {"-fcr", "-fontColorR", MSyntax::kDouble},
    {"-fcg", "-fontColorG", MSyntax::kDouble},
    {"-fcb", "-fontColorB", MSyntax::kDouble},
    {"-wtm", "-weightMode", MSyntax::kString},
    {"-plg", "-plug", MSyntax::kString},
    {"-inf", "-influence", MSyntax::kString},
    {"-t", "-target", MSyntax::kString},
    {"-ngl", "-ngLayer", MSyntax::kString},
    {"-dis", "-ngDistributeWeights", MSyntax::kBoolean},
    {"-cp", "-copy", MSyntax::kBoolean},
    {"-ps", "-paste", MSyntax::kBoolean},
    {"-ppv", "-pastePerVertex", MSyntax::kBoolean},
};

/// What one edit works on.
struct Edit {
    morvaneContext& context;
    const MArgParser& arguments;
    bool ngEnabled; ///< asked once, before any flag
};

MStatus argument(const MArgParser& arguments, const char* flag, MString& value)
{
    MStatus status;
    value = arguments.flagArgumentString(flag, 0, &status);
    return status;
}

MStatus argument(const MArgParser& arguments, const char* flag, bool& value)
{
    MStatus status;
    value = arguments.flagArgumentBool(flag, 0, &status);
    return status;
}

MStatus argument(const MArgParser& arguments, const char* flag, double& value)
{
    MStatus status;
    value = arguments.flagArgumentDouble(flag, 0, &status);
    return status;
}

MStatus argument(const MArgParser& arguments, const char* flag, int& value)
{
    MStatus status;
    value = arguments.flagArgumentInt(flag, 0, &status);
    return status;
}

/// How a step leaves the edit: on to the next flag, or out with a status.
struct Outcome {
    bool goesOn;
    MStatus status;
};
const Outcome kNextFlag = {true, MStatus(MS::kSuccess)};

Outcome leave(const MStatus& status)
{
    return {false, status};
}

Outcome leaveReported(const MStatus& status, int line)
{
    return leave(apiError(status, kContextCommandSource, line));
}

/// A flag whose argument goes straight to a plain setter.
template <typename Value, typename Stored, void (morvaneContext::*setter)(Stored), int line>
Outcome store(const Edit& edit, const char* flag)
{
    Value value = Value();
    const MStatus status = argument(edit.arguments, flag, value);
    if (!status)
        return leaveReported(status, line);
    (edit.context.*setter)(static_cast<Stored>(value));
    return kNextFlag;
}

Outcome editDeformer(const Edit& edit, const char* flag)
{
    MString name;
    MStatus status = argument(edit.arguments, flag, name);
    if (!status)
        return leaveReported(status, 79);
    status = edit.context.setDeformerStr(name);
    return status ? kNextFlag : leaveReported(status, 81);
}

/// Scripts pass any non-zero number to mean one: the argument is taken as a truth value, not-a-number
/// included.
Outcome editWeightMin(const Edit& edit, const char* flag)
{
    double value = 0.0;
    const MStatus status = argument(edit.arguments, flag, value);
    if (!status)
        return leaveReported(status, 101);
    const bool isOne = std::isnan(value) || value < 0.0 || value > 0.0;
    edit.context.setWeightMin(isOne ? 1.0 : 0.0);
    return kNextFlag;
}

Outcome editDisplayPrecision(const Edit& edit, const char* flag)
{
    int value = 0;
    const MStatus status = argument(edit.arguments, flag, value);
    if (!status)
        return leaveReported(status, 115);
    if (value < 0) {
        MGlobal::displayWarning("displayPrecision cannot be negative.");
        return leave(MS::kFailure);
    }
    edit.context.setDisplayPrecision(value);
    return kNextFlag;
}

Outcome editTarget(const Edit& edit, const char* flag)
{
    MString name;
    const MStatus status = argument(edit.arguments, flag, name);
    if (!status)
        return leaveReported(status, 127);
    if (edit.context.setTargetString(name))
        return kNextFlag;
    MGlobal::displayWarning(name + " is not a valid target.");
    return leave(MS::kFailure);
}

/// Unlike a negative precision, a negative size leaves with success.
Outcome editFontSize(const Edit& edit, const char* flag)
{
    int value = 0;
    const MStatus status = argument(edit.arguments, flag, value);
    if (!status)
        return leaveReported(status, 139);
    if (value < 0) {
        MGlobal::displayWarning("fontSize cannot be negative.");
        return leave(MS::kSuccess);
    }
    edit.context.setFontSize(value);
    return kNextFlag;
}

Outcome editWeightMode(const Edit& edit, const char* flag)
{
    MString name;
    const MStatus status = argument(edit.arguments, flag, name);
    if (!status)
        return leaveReported(status, 186);
    if (const ModeRow* row = findModeByEditName(name, edit.ngEnabled)) {
        edit.context.setWeightMode(row->mode);
        return kNextFlag;
    }
    MString text(
        "Invalid value for -weightMode/-wtm flag, choose default, plug, skinCluster, dualQuaternion, "
        "blendShapeTarget, blendShapeBase");
    if (edit.ngEnabled)
        text += ", ngSkinToolsMask, ngSkinToolsInfluence, ngSkinToolsDualQuaternion";
    MGlobal::displayError(text + ".");
    return leave(MS::kFailure);
}

Outcome editPlug(const Edit& edit, const char* flag)
{
    MString name;
    MStatus status = argument(edit.arguments, flag, name);
    if (!status)
        return leaveReported(status, 239);
    status = edit.context.setWeightsPlugStr(name);
    return status ? kNextFlag : leaveReported(status, 241);
}

Outcome editInfluence(const Edit& edit, const char* flag)
{
    edit.context.setSkinInfluence(MDagPath());
    MString name;
    MStatus status = argument(edit.arguments, flag, name);
    if (!status)
        return leaveReported(status, 248);
    MSelectionList list;
    status = list.add(name);
    if (!status)
        return leaveReported(status, 251);
    MDagPath path;
    MObject component;
    status = list.getDagPath(0, path, component);
    if (!status)
        return leaveReported(status, 254);
    edit.context.setSkinInfluence(path);
    edit.context.setSkinInfluenceStr(name);
    return kNextFlag;
}

// The argument of these two is not read, and what they return is their own affair.
Outcome editCopy(const Edit& edit, const char*)
{
    edit.context.copyWeights();
    return kNextFlag;
}

Outcome editPaste(const Edit& edit, const char*)
{
    edit.context.pasteWeights();
    return kNextFlag;
}

struct EditStep {
    const char* flag;
    Outcome (*apply)(const Edit& edit, const char* flag);
};

using Tool = morvaneContext;

/// The order in which an edit applies its flags; reports carry the lines given here.
const EditStep kEditSteps[] = {
    {"-deformer", editDeformer},
    {"-clampMin", store<bool, bool, &Tool::setClampedMin, 87>},
    {"-clampMax", store<bool, bool, &Tool::setClampedMax, 94>},
    {"-weightMin", editWeightMin},
    {"-weightMax", store<double, double, &Tool::setWeightMax, 108>},
    {"-displayPrecision", editDisplayPrecision},
    {"-target", editTarget},
    {"-fontSize", editFontSize},
    {"-fontOpacity", store<double, float, &Tool::setFontOpacity, 151>},
    {"-fontColorR", store<double, float, &Tool::setFontColorR, 158>},
    {"-fontColorG", store<double, float, &Tool::setFontColorG, 165>},
    {"-fontColorB", store<double, float, &Tool::setFontColorB, 172>},
    {"-displayWeights", store<bool, bool, &Tool::setDisplayWeights, 179>},
    {"-weightMode", editWeightMode},
    {"-plug", editPlug},
    {"-influence", editInfluence},
    {"-ngLayer", store<MString, MString, &Tool::setNgLayerString, 262>},
    {"-ngDistributeWeights", store<bool, bool, &Tool::setDistributeWeightsNg, 269>},
    {"-copy", editCopy},
    {"-paste", editPaste},
    {"-pastePerVertex", store<bool, bool, &Tool::setPastePerVertex, 276>},
};

MString influenceName(const MDagPath& influence)
{
    return influence.isValid() ? influence.fullPathName() : MString();
}

struct QueryStep {
    const char* flag;
    void (*answer)(MPxContextCommand& command, const morvaneContext& tool);
};

using Command = MPxContextCommand;

/// The order in which a query answers its flags: of several, the last one wins.
const QueryStep kQuerySteps[] = {
    {"-deformer", [](Command& command, const Tool& tool) { command.setResult(tool.getDeformerStr()); }},
    {"-clampMin", [](Command& command, const Tool& tool) { command.setResult(tool.getClampedMin()); }},
    {"-clampMax", [](Command& command, const Tool& tool) { command.setResult(tool.getClampedMax()); }},
    {"-weightMin", [](Command& command, const Tool& tool) { command.setResult(tool.getWeightMin()); }},
    {"-weightMax", [](Command& command, const Tool& tool) { command.setResult(tool.getWeightMax()); }},
    {"-displayPrecision",
     [](Command& command, const Tool& tool) { command.setResult(tool.getDisplayPrecision()); }},
    {"-target", [](Command& command, const Tool& tool) { command.setResult(tool.getTargetString()); }},
    {"-displayWeights",
     [](Command& command, const Tool& tool) { command.setResult(tool.getDisplayWeights()); }},
    {"-fontSize", [](Command& command, const Tool& tool) { command.setResult(tool.getFontSize()); }},
    {"-fontOpacity", [](Command& command,
                        const Tool& tool) { command.setResult(static_cast<double>(tool.getFontOpacity())); }},
    {"-fontColorR", [](Command& command,
                       const Tool& tool) { command.setResult(static_cast<double>(tool.getFontColorR())); }},
    {"-fontColorG", [](Command& command,
                       const Tool& tool) { command.setResult(static_cast<double>(tool.getFontColorG())); }},
    {"-fontColorB", [](Command& command,
                       const Tool& tool) { command.setResult(static_cast<double>(tool.getFontColorB())); }},
    {"-weightMode",
     [](Command& command, const Tool& tool) { command.setResult(weightModeString[tool.getWeightMode()]); }},
    {"-plug", [](Command& command, const Tool& tool) { command.setResult(tool.getWeightsPlugStr()); }},
    {"-influence",
     [](Command& command, const Tool& tool) { command.setResult(influenceName(tool.getSkinInfluence())); }},
    {"-ngLayer", [](Command& command, const Tool& tool) { command.setResult(tool.getNgLayerString()); }},
    {"-ngDistributeWeights",
     [](Command& command, const Tool& tool) { command.setResult(tool.getDistributeWeightsNg()); }},
    {"-pastePerVertex",
     [](Command& command, const Tool& tool) { command.setResult(tool.getPastePerVertex()); }},
};

} // namespace

morvaneContextCommand::~morvaneContextCommand() = default;

void* morvaneContextCommand::creator()
{
    morvaneContextCommand* command = nullptr;
    guarded("Making the context command", [&command] {
        command = new morvaneContextCommand;
        return MStatus(MS::kSuccess);
    });
    return command;
}

MPxContext* morvaneContextCommand::makeObj()
{
    guarded("Making the tool", [this] {
        context = new morvaneContext;
        return MStatus(MS::kSuccess);
    });
    return context;
}

MStatus morvaneContextCommand::appendSyntax()
{
    return guarded("Building the syntax", [this] {
        MSyntax flags = syntax();
        for (const Flag& flag : kFlags)
            flags.addFlag(flag.shortName, flag.longName, flag.type);
        return MStatus(MS::kSuccess);
    });
}

MStatus morvaneContextCommand::doEditFlags()
{
    return guarded("Editing the tool", [this] { return editFlags(); });
}

MStatus morvaneContextCommand::doQueryFlags()
{
    return guarded("Querying the tool", [this] { return queryFlags(); });
}

MStatus morvaneContextCommand::editFlags()
{
    if (context == nullptr)
        return MS::kFailure;
    const MArgParser arguments = parser();
    const Edit edit = {*context, arguments, isNgEnabled()};
    for (const EditStep& step : kEditSteps) {
        if (!arguments.isFlagSet(step.flag))
            continue;
        const Outcome outcome = step.apply(edit, step.flag);
        if (!outcome.goesOn)
            return outcome.status;
    }
    return MS::kSuccess;
}

MStatus morvaneContextCommand::queryFlags()
{
    if (context == nullptr)
        return MS::kFailure;
    const MArgParser arguments = parser();
    for (const QueryStep& step : kQuerySteps) {
        if (arguments.isFlagSet(step.flag))
            step.answer(*this, *context);
    }
    return MS::kSuccess;
}
