#include "graph/graph.h"
#include "mel/command.h"
#include "mel/commands/register.h"
#include "mel/interpreter.h"
#include "scene/maText.h"
#include "scene/sceneFile.h"
#include "scene/sceneInfo.h"
#include "session.h"
#include "tools/sceneCallbacks.h"
#include "tools/tools.h"
#include "types/error.h"

#include <maya/MSceneMessage.h>

#include <algorithm>
#include <filesystem>

namespace host {

namespace {

using mel::Args;
using mel::ArgType;
using mel::CommandSpec;
using mel::Value;

void tell(Session& session, MSceneMessage::Message message)
{
    session.tools().callbacks().send(message);
}

std::string wholePath(const std::string& path)
{
    std::error_code problem;
    const std::filesystem::path whole = std::filesystem::absolute(path, problem);
    if (path.empty() || problem)
        throw Error("file: '" + path + "' is no file name.");
    return whole.lexically_normal().string();
}

void refuseToLose(Session& session, const Args& args)
{
    if (session.graph().modified && !args.isSet("force"))
        throw Error("Unsaved changes.");
}

Value newFile(Session& session, const Args& args)
{
    refuseToLose(session, args);
    tell(session, MSceneMessage::kBeforeNew);
    session.newScene();
    tell(session, MSceneMessage::kAfterNew);
    return std::string("untitled");
}

bool exists(const std::string& path)
{
    std::error_code unreadable; // counts as a file that is not there
    return std::filesystem::exists(path, unreadable);
}

std::string pathArgument(const Args& args)
{
    if (args.objects().size() != 1)
        throw Error("file needs one file name.");
    return args.objects().front().toString();
}

Value openFile(Session& session, const Args& args)
{
    const std::string path = wholePath(pathArgument(args));
    refuseToLose(session, args);
    tell(session, MSceneMessage::kBeforeOpen);
    openScene(session, path);
    tell(session, MSceneMessage::kAfterOpen);
    return path;
}

Value importFile(Session& session, const Args& args)
{
    const std::string path = wholePath(pathArgument(args));
    tell(session, MSceneMessage::kBeforeImport);
    importScene(session, path, args.textOr("namespace", {}));
    tell(session, MSceneMessage::kAfterImport);
    return path;
}

void requireAscii(const Args& args)
{
    const std::string type = args.textOr("type", "mayaAscii");
    if (type != "mayaAscii")
        throw Error("file: the type '" + type + "' is not supported (mayaAscii is).");
}

Value saveFile(Session& session, const Args& args)
{
    requireAscii(args);
    if (session.sceneName.empty())
        throw Error("file: the scene has no name yet (file -rename).");
    tell(session, MSceneMessage::kBeforeSave);
    saveScene(session, session.sceneName);
    tell(session, MSceneMessage::kAfterSave);
    return session.sceneName;
}

Value exportFile(Session& session, const Args& args)
{
    requireAscii(args);
    const std::string path = wholePath(pathArgument(args));
    const bool modified = session.graph().modified;
    tell(session, MSceneMessage::kBeforeExport);
    saveScene(session, path);
    session.graph().modified = modified;
    tell(session, MSceneMessage::kAfterExport);
    return path;
}

Value queryFile(Session& session, const Args& args)
{
    const std::string name = args.isSet("shortName")
                                 ? std::filesystem::path(session.sceneName).filename().string()
                                 : session.sceneName;
    if (args.isSet("modified") || args.isSet("anyModified"))
        return session.graph().modified;
    if (args.isSet("exists"))
        return session.mel().limits.outside && exists(pathArgument(args));
    if (args.isSet("location"))
        return name.empty() ? std::string("unknown") : name;
    if (args.isSet("type"))
        return mel::StringArray{"mayaAscii"};
    if (args.isSet("sceneName"))
        return name;
    throw Error("file: the query needs a flag that says what to tell.");
}

Value file(Session& session, const Args& args)
{
    if (args.query())
        return queryFile(session, args);
    struct Mode {
        const char* flag;
        Value (*run)(Session&, const Args&);
    };
    static constexpr Mode kModes[] = {{"new", newFile},
                                      {"open", openFile},
                                      {"import", importFile},
                                      {"save", saveFile},
                                      {"exportAll", exportFile}};
    if (args.isSet("rename"))
        session.sceneName = wholePath(args.text("rename"));
    if (args.isSet("modified"))
        session.graph().modified = args.boolean("modified");
    const auto mode = std::find_if(std::begin(kModes), std::end(kModes),
                                   [&](const Mode& candidate) { return args.isSet(candidate.flag); });
    if (mode != std::end(kModes) && mode->run != newFile)
        session.mel().requireOutside("file");
    if (mode != std::end(kModes))
        return mode->run(session, args);
    requireAscii(args);
    if (!args.isSet("rename") && !args.isSet("modified") && !args.isSet("type"))
        throw Error("file needs a flag that says what to do (-new, -open, -save ...).");
    return session.sceneName;
}

Value fileInfo(Session& session, const Args& args)
{
    SceneInfo& info = session.sceneInfo();
    const std::vector<std::string> words = args.objectNames();
    if (args.isSet("remove")) {
        const std::string key = args.text("remove");
        info.fileInfo.erase(std::remove_if(info.fileInfo.begin(), info.fileInfo.end(),
                                           [&](const auto& entry) { return entry.first == key; }),
                            info.fileInfo.end());
        return {};
    }
    if (args.query() || words.empty()) {
        mel::StringArray values;
        for (const auto& [key, value] : info.fileInfo) {
            if (words.empty())
                values.push_back(key);
            if (words.empty() || key == words.front())
                values.push_back(value);
        }
        return values;
    }
    if (words.size() != 2)
        throw Error("fileInfo takes a keyword and a value.");
    info.setFileInfo(words[0], words[1]);
    session.graph().modified = true;
    return {};
}

/// Scripts speak in centimetres and degrees; other units are read from files only.
Value currentUnit(Session& session, const Args& args)
{
    SceneUnits& units = session.sceneInfo().units;
    if (args.query()) {
        if (args.isSet("angle"))
            return std::string("deg");
        return args.isSet("time") ? units.time : std::string("cm");
    }
    SceneUnits wanted;
    if (args.isSet("linear") && (!wanted.setLinear(args.text("linear")) || wanted.centimetres != 1.0))
        throw Error("currentUnit: '" + args.text("linear") + "' is not supported (cm is).");
    if (args.isSet("angle") && (!wanted.setAngle(args.text("angle")) || wanted.degrees != 1.0))
        throw Error("currentUnit: '" + args.text("angle") + "' is not supported (deg is).");
    if (args.isSet("time"))
        units.time = args.text("time");
    return {};
}

Value requiresCommand(Session& session, const Args& args)
{
    const std::vector<std::string> words = args.objectNames();
    SceneInfo& info = session.sceneInfo();
    if (words[0] == "maya") {
        info.version = words[1];
        return {};
    }
    const std::string statement = "requires " + maQuoted(words[0]) + " " + maQuoted(words[1]);
    if (std::find(info.requirements.begin(), info.requirements.end(), statement) == info.requirements.end())
        info.requirements.push_back(statement);
    return {};
}

} // namespace

void registerFileCommands(mel::CommandRegistry& registry)
{
    registry.add(CommandSpec("file")
                     .flag("new", "new")
                     .flag("o", "open")
                     .flag("i", "import")
                     .flag("s", "save")
                     .flag("ea", "exportAll")
                     .flag("rn", "rename", {ArgType::kString})
                     .flag("typ", "type", {ArgType::kString})
                     .flag("ns", "namespace", {ArgType::kString})
                     .flag("f", "force")
                     .flag("mf", "modified", {ArgType::kBool})
                     .flag("amf", "anyModified")
                     .flag("sn", "sceneName")
                     .flag("shn", "shortName")
                     .flag("loc", "location")
                     .flag("ex", "exists")
                     .flag("iv", "ignoreVersion")
                     .objects(0, 1)
                     .query(),
                 file);
    registry.add(CommandSpec("fileInfo").flag("rm", "remove", {ArgType::kString}).objects(0, 2).query(),
                 fileInfo);
    registry.add(CommandSpec("currentUnit")
                     .flag("l", "linear", {ArgType::kString})
                     .flag("a", "angle", {ArgType::kString})
                     .flag("t", "time", {ArgType::kString})
                     .query(),
                 currentUnit);
    registry.add(CommandSpec("requires").objects(2, 2), requiresCommand);
}

} // namespace host
