#include "plugin/sessions/sessionSteps.h"

#include "graph/graph.h"
#include "mel/interpreter.h"
#include "nodes/geometry.h"
#include "nodes/pointTexts.h"
#include "nodes/shapeEvaluation.h"
#include "types/error.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <unistd.h>

namespace testing_support {

namespace {

const std::vector<std::string> kModes{"default",          "plug",           "blendShapeBase",
                                      "blendShapeTarget", "dualQuaternion", "skinCluster"};
const std::vector<std::string> kChannels{"tx", "ty", "tz", "rx", "ry", "rz", "sx", "sy", "visibility"};

} // namespace

SessionSteps::SessionSteps(host::Session& owner, unsigned seed, std::string plugIn)
    : session(owner), engine(seed), library(std::move(plugIn))
{}

/// Every compiler draws the same.
int SessionSteps::below(int end)
{
    return end > 1 ? static_cast<int>(engine() % static_cast<unsigned>(end)) : 0;
}

std::string SessionSteps::number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.6g", value);
    return text;
}

std::vector<std::string> SessionSteps::namesOf(const char* type)
{
    std::vector<std::string> names;
    for (const auto& node : session.graph().nodes())
        if (node->type().isA(type) && !node->isDefault && !node->isIntermediate())
            names.push_back(node->uniqueName());
    return names;
}

std::string SessionSteps::anyShape()
{
    std::vector<std::string> names;
    for (const auto& node : session.graph().nodes())
        if (host::shapeAttributes(*node) && !node->isIntermediate())
            names.push_back(node->uniqueName());
    return any(names);
}

std::string SessionSteps::anyPoint()
{
    const std::string name = anyShape();
    host::Node* const node = session.graph().find(name);
    host::GeometryRef geometry;
    try {
        geometry = node ? host::shapeGeometry(*node->asDag()) : nullptr;
    } catch (const host::Error&) {
        // A shape whose history cannot be computed.
    }
    if (!geometry || geometry->count() == 0)
        return name + ".vtx[0]";
    const int point = below(static_cast<int>(geometry->count()));
    return name + "." + host::pointTexts(*geometry, {point}).front();
}

std::string SessionSteps::anyNode()
{
    return any(namesOf("node"));
}

std::string SessionSteps::edit(const std::string& flags)
{
    return "morvaneContext -e " + flags + " morvaneContext1";
}

void SessionSteps::begin(const std::function<void(const std::string&)>& run)
{
    set = below(2) == 0 ? "Maya_Default" : "Mine";
    clickDrag = below(2) == 0;
    down = false;
    run("setToolTo selectSuperContext; file -f -new; softSelect -sse 0; symmetricModelling -symmetry 0");
    run("if (!`hotkeySet -exists Mine`) hotkeySet -source Maya_Default Mine");
    run("hotkeySet -e -current " + set + "; selectPref -clickDrag " + (clickDrag ? "true" : "false"));
    run("polyPlane -n sheet -w 8 -h 6 -sx 3 -sy 2 -ch " + std::to_string(below(2)));
    run("polyPlane -n other -w 8 -h 6 -sx 3 -sy 2 -ch 0; move -r 0 2 1 other.vtx[4:9]");
    run("polyPlane -n smile -w 8 -h 6 -sx 3 -sy 2 -ch 0; move -r 0 3 0 smile.vtx[2:7]; setAttr smile.tz 9");
    run("curve -n rail -d 1 -p 0 0 6 -p 1 0 6 -p 2 0 6; select -cl; joint -n hip; joint -n knee -p 2 0 0");
    run("select -cl; createNode transform -n free");
    for (int layers = 2 + below(3); layers > 0; --layers)
        run(deform());
    for (int values = 4 + below(8); values > 0; --values)
        run(setWeight());
    for (int links = below(5); links > 0; --links)
        run(connect());
    run("setAttr knee.rz 30; viewFit sheet; setToolTo morvaneContext1");
}

std::string SessionSteps::press()
{
    std::vector<int> pixel;
    try {
        pixel = session.mel().execute("viewportProject \"" + anyPoint() + "\"").toIntArray();
    } catch (const host::Error&) {
        // Nothing to be seen of it.
    }
    const bool onPoint = pixel.size() == 2 && below(8) > 0;
    x = onPoint ? pixel[0] : below(900);
    y = onPoint ? pixel[1] : below(500);
    down = true;
    const int held = below(10);
    return "viewportEvent -press " + std::to_string(x) + " " + std::to_string(y) +
           (held == 0   ? " -shift"
            : held == 1 ? " -control"
                        : "");
}

std::string SessionSteps::drag()
{
    x += below(81) - 40;
    y += below(81) - 40;
    return "viewportEvent -drag " + std::to_string(x) + " " + std::to_string(y);
}

std::string SessionSteps::release()
{
    down = false;
    return "viewportEvent -release " + std::to_string(x) + " " + std::to_string(y);
}

std::string SessionSteps::selectPoints()
{
    std::string script = below(3) == 0 ? "select -add" : "select";
    for (int many = 1 + below(4); many > 0; --many)
        script += " " + anyPoint();
    return script;
}

std::string SessionSteps::selectObjects()
{
    return below(3) == 0 ? "select -cl" : "select " + anyNode();
}

std::string SessionSteps::settings()
{
    switch (below(8)) {
    case 0:
    case 1:
        return edit("-weightMode " + any(kModes));
    case 2:
    case 3:
        return edit("-deformer " + anyDeformer());
    case 4:
        return edit("-influence " + any(namesOf("joint")));
    case 5:
        return edit("-target " + any({"smile", "other", "weight[0]"}));
    case 6:
        return edit("-plug " + any({"mask", "weights", "envelope"}));
    default:
        return edit("-clampMin " + std::to_string(below(2)) + " -clampMax " + std::to_string(below(2)) +
                    " -weightMin 0 -weightMax " + number(0.5 + below(3)));
    }
}

std::string SessionSteps::reach()
{
    if (below(2) == 0)
        return "softSelect -sse " + std::to_string(below(2)) + " -ssd " + std::to_string(1 + below(4));
    return "symmetricModelling -symmetry " + std::to_string(below(2)) + " -axis x";
}

std::string SessionSteps::copyOrPaste()
{
    return edit(below(2) == 0 ? "-copy true" : "-paste true");
}

std::string SessionSteps::history()
{
    return below(3) > 0 ? "undo" : "redo";
}

std::string SessionSteps::otherTool()
{
    return below(3) > 0 ? "setToolTo morvaneContext1" : "setToolTo selectSuperContext";
}

std::string SessionSteps::erase()
{
    return below(6) == 0 ? "delete -ch " + anyShape() : "delete " + anyNode();
}

std::string SessionSteps::rename()
{
    return "rename " + anyNode() + " " + any({"sheet", "thing", "named1", "sheetShape"});
}

std::string SessionSteps::reparent()
{
    return below(3) == 0 ? "parent -w " + any(namesOf("transform"))
                         : "parent " + any(namesOf("transform")) + " " + any(namesOf("transform"));
}

std::string SessionSteps::disconnect()
{
    const auto all = session.graph().connections();
    if (all.empty())
        return "select -cl";
    const auto& link = all[static_cast<std::size_t>(below(static_cast<int>(all.size())))];
    return "disconnectAttr " + link.source.name() + " " + link.destination.name();
}

std::string SessionSteps::connect()
{
    const std::string index = std::to_string(below(12)), force = below(2) == 0 ? "-f " : "";
    const std::string transform = any(namesOf("transform"));
    switch (below(6)) {
    case 0:
        return "connectAttr " + force + transform + "." + any(kChannels) + " " + any(namesOf("transform")) +
               "." + any(kChannels);
    case 1:
        return "connectAttr " + force + transform + ".ty " + anyDeformer() + ".weightList[0].weights[" +
               index + "]";
    case 2:
        return "connectAttr " + force + anyShape() + ".worldMesh[0] " + any(namesOf("blendShape")) +
               ".it[0].itg[" + std::to_string(below(3)) + "].iti[6000].igt";
    case 3:
        return "connectAttr " + force + transform + ".worldMatrix[0] " + any(namesOf("skinCluster")) +
               ".matrix[" + std::to_string(below(4)) + "]";
    case 4:
        return "connectAttr " + force + anyDeformer() + ".og[0] " + anyDeformer() + ".ip[0].ig";
    default:
        return "connectAttr " + force + transform + ".tx " + anyDeformer() + ".envelope";
    }
}

std::string SessionSteps::setWeight()
{
    const std::string index = std::to_string(below(12)), value = " " + number(number());
    switch (below(6)) {
    case 0:
        return "setAttr " + any(namesOf("maskedOffset")) + ".maskList[0].mask[" + index + "]" + value;
    case 1:
        return "setAttr " + any(namesOf("blendShape")) + ".it[0].itg[" + std::to_string(below(2)) + "].tw[" +
               index + "]" + value;
    case 2:
        return "setAttr " + any(namesOf("blendShape")) + ".it[0].bw[" + index + "]" + value;
    case 3:
        return "setAttr " + any(namesOf("skinCluster")) + ".wl[" + index + "].w[" + std::to_string(below(3)) +
               "]" + value;
    case 4:
        return "setAttr " + any(namesOf("skinCluster")) + ".bw[" + index + "]" + value;
    default:
        return "setAttr " + anyDeformer() + ".weightList[0].weights[" + index + "]" + value;
    }
}

std::string SessionSteps::setNumber()
{
    if (below(3) == 0)
        return "setAttr " + anyDeformer() + ".envelope " + number(below(3) / 2.0);
    return "setAttr " + any(namesOf("transform")) + "." + any(kChannels) + " " + number(number() * 4);
}

std::string SessionSteps::deform()
{
    const std::string name = "d" + std::to_string(++serial), shape = anyShape();
    switch (below(7)) {
    case 0:
        return "cluster -n " + name + " " + shape;
    case 1:
        return "maskedOffset -n " + name + " -o 0 2 0.5 " + shape;
    case 2:
        return "skinCluster -tsb -n " + name + " hip knee " + shape;
    case 3:
        return "blendShape -n " + name + " -w 0 0.5 smile " + (below(2) == 0 ? "other " : "") + "sheet";
    case 4:
        return "softMod -n " + name + " -frd 5 " + shape;
    case 5:
        return "lattice -n " + name + " -dv 2 2 2 -oc 1 " + shape;
    default:
        return "cluster -uct 1 -n " + name + " " + shape;
    }
}

std::string SessionSteps::duplicate()
{
    return "duplicate " + any(namesOf("transform"));
}

std::string SessionSteps::lock()
{
    const std::string on = std::to_string(below(2));
    return below(2) == 0 ? "lockNode -l " + on + " " + anyNode()
                         : "setAttr -lock " + on + " " + any(namesOf("transform")) + "." + any(kChannels);
}

std::string SessionSteps::move()
{
    const std::string way = number(number()) + " " + number(number()) + " " + number(number()) + " ";
    return "move -r " + way + (below(2) == 0 ? anyPoint() : any(namesOf("transform")));
}

std::string SessionSteps::percent()
{
    return below(2) == 0 ? "percent -v " + number(number()) + " " + anyDeformer() + " " + anyPoint()
                         : "skinPercent -tv " + any(namesOf("joint")) + " " + number(number()) + " " +
                               any(namesOf("skinCluster")) + " " + anyPoint();
}

std::string SessionSteps::attribute()
{
    const std::string node = anyNode();
    switch (below(4)) {
    case 0:
        return "addAttr -ln extra -at double -dv 0.5 " + node;
    case 1:
        return "deleteAttr " + node + ".extra";
    case 2:
        return "connectAttr -f " + node + ".extra " + any(namesOf("transform")) + ".tz";
    default:
        return "removeMultiInstance -b 1 " + anyDeformer() + ".weightList[0]";
    }
}

std::string SessionSteps::reopen()
{
    const std::string path = ::testing::TempDir() + "session" + std::to_string(getpid()) + ".ma";
    return "file -rename \"" + path + "\"; file -f -save -type mayaAscii; file -f -open \"" + path + "\"";
}

std::string SessionSteps::reload()
{
    down = false;
    return "unloadPlugin morvane; loadPlugin \"" + library + "\"";
}

SessionSteps::Step SessionSteps::next()
{
    const struct {
        int share;
        Maker make;
        bool ofTool;
    } kinds[] = {
        {down ? 0 : 16, &SessionSteps::press, true},
        {down ? 40 : 0, &SessionSteps::drag, true},
        {down ? 25 : 1, &SessionSteps::release, true},
        {8, &SessionSteps::selectPoints, false},
        {2, &SessionSteps::selectObjects, false},
        {9, &SessionSteps::settings, false},
        {1, &SessionSteps::reach, false},
        {5, &SessionSteps::copyOrPaste, true},
        {8, &SessionSteps::history, false},
        {3, &SessionSteps::otherTool, false},
        {3, &SessionSteps::erase, false},
        {2, &SessionSteps::rename, false},
        {2, &SessionSteps::reparent, false},
        {3, &SessionSteps::disconnect, false},
        {4, &SessionSteps::connect, false},
        {4, &SessionSteps::setWeight, false},
        {3, &SessionSteps::setNumber, false},
        {3, &SessionSteps::deform, false},
        {1, &SessionSteps::duplicate, false},
        {1, &SessionSteps::lock, false},
        {3, &SessionSteps::move, false},
        {3, &SessionSteps::percent, false},
        {2, &SessionSteps::attribute, false},
        {1, &SessionSteps::reopen, false},
        {1, &SessionSteps::reload, false},
    };
    int all = 0;
    for (const auto& kind : kinds)
        all += kind.share;
    int drawn = below(all);
    for (const auto& kind : kinds) {
        if (drawn < kind.share) {
            const bool goesBack = kind.make == &SessionSteps::history;
            const bool flushes = kind.make == &SessionSteps::reopen || kind.make == &SessionSteps::reload;
            return {(this->*kind.make)(), kind.ofTool, goesBack, flushes};
        }
        drawn -= kind.share;
    }
    return {};
}

} // namespace testing_support
