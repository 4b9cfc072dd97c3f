#include "plugin/modes/modeScene.h"

#include "graph/graph.h"
#include "support/weightModel.h"
#include "support/weights.h"
#include "undo/undoQueue.h"
#include "view/viewport.h"

#include <cmath>

namespace testing_support {

namespace {

const char kTarget[] = "face.inputTarget[0].inputTargetGroup[4].targetWeights";

std::string listText(const std::vector<double>& values)
{
    std::string text;
    char number[32];
    for (const double value : values) {
        std::snprintf(number, sizeof number, "%.17g", value);
        text += (text.empty() ? "" : ",") + std::string(number);
    }
    return text;
}

/// Numbers all over 0.1..0.9 that look like nothing in particular.
double scattered(int step)
{
    return 0.1 + 0.8 * std::fmod(0.37 + 0.618 * step, 1.0);
}

/// With few decimals, as layer lists carry them.
double rounded(double number)
{
    return std::round(number * 128) / 128;
}

} // namespace

const std::vector<WeightPlace> kWeightPlaces = {
    {"default", "lift.weightList[1].weights", "", true, false, WeightPlace::kSteps},
    {"plug", "lift.maskList[1].mask", "", true, false, WeightPlace::kAround},
    {"skinCluster", "", "", false, true, WeightPlace::kAround},
    {"dualQuaternion", "sheetSkin.blendWeights", "", false, true, WeightPlace::kSteps},
    {"blendShapeTarget", kTarget, "", true, false, WeightPlace::kAround},
    {"blendShapeBase", "face.inputTarget[0].baseWeights", "", true, false, WeightPlace::kAround},
    {"ngSkinToolsMask", "", "mask", false, true, WeightPlace::kAround},
    {"ngSkinToolsDualQuaternion", "", "dq", false, true, WeightPlace::kAround},
    {"ngSkinToolsInfluence", "", "1", false, true, WeightPlace::kAround},
};

const WeightPlace& weightPlace(const std::string& mode)
{
    for (const WeightPlace& place : kWeightPlaces)
        if (mode == place.mode)
            return place;
    ADD_FAILURE() << "no mode " << mode;
    return kWeightPlaces.front();
}

std::vector<std::string> linesOf(const std::vector<std::string>& trace, const std::string& word)
{
    std::vector<std::string> lines;
    for (const std::string& line : trace)
        if (line.compare(0, word.size() + 1, word + "\t") == 0)
            lines.push_back(line);
    return lines;
}

void ModeScene::build(const WeightPlace& where)
{
    place = where;
    buildMeshes();
    buildSkins();
    if (place.isLayer())
        attachLayers();
    fillWeights();
    mel("setAttr pair.rotateY 25; setAttr pair.scaleX 1.25; setAttr persp.rotate -type double3 -55 12 0;"
        "select -cl");
    edit("-deformer lift -plug mask -influence knee -ngLayer paintLayer");
    if (place.name() == "blendShapeTarget" || place.name() == "blendShapeBase")
        edit("-deformer face -target smile");
    edit("-weightMode " + place.name());
    toolOn();
    lookAt(kMiddle, 6);
    mel("select sheet.vtx[7]");
    session.undo().flush();
    trace.clear();
}

void ModeScene::buildMeshes()
{
    mel("polyPlane -n sheet -w 8 -h 6 -sx 4 -sy 2 -ch 0; polyPlane -n twin -w 8 -h 6 -sx 4 -sy 2 -ch 0;"
        "xform -r -os -t 0 0 9 twin.vtx[*]; polyPlane -n smile -w 8 -h 6 -sx 4 -sy 2 -ch 0;"
        "move -r 1 2.5 1.5 smile.vtx[*];"
        "createNode transform -n pair; parent sheet pair; parent twin pair;"
        "polyPlane -n sheetPose -w 8 -h 6 -sx 4 -sy 2 -ch 0; polyPlane -n twinPose -w 8 -h 6 -sx 4 -sy 2 -ch "
        "0;"
        "xform -r -os -t 0 0 9 twinPose.vtx[*]; move -r 0 0.5 1 sheetPose.vtx[*] twinPose.vtx[*];"
        "createNode transform -n poses; parent sheetPose poses; parent twinPose poses;"
        "blendShape -n face -w 0 0.5 poses pair; blendShape -e -t sheet 4 smile 1 face; setAttr face.smile 1;"
        "pointPosition sheet.vtx[0]; delete poses smile; maskedOffset -n lift -o 1 2.5 1.5 twin sheet");
}

void ModeScene::buildSkins()
{
    mel("select -cl; joint -n hip -p -5 0 2; joint -n knee -p -1 0 1; joint -n toe -p 4 0 2; select -cl;"
        "joint -n spare -p 0 0 20; select -cl");
    for (const std::string mesh : {"sheet", "twin"}) {
        const std::string skin = mesh + "Skin";
        if (place.isLayer())
            mel("skinCluster -tsb -mi 3 -dr 2 -n " + skin + " hip knee toe " + mesh);
        else
            mel("skinCluster -tsb -mi 4 -dr 2 -n " + skin + " spare hip knee toe " + mesh +
                "; skinCluster -e -ri spare " + skin);
        mel("setAttr " + skin + ".skinningMethod 2");
    }
    mel("setAttr knee.translateY 3; setAttr knee.rotateX 100; setAttr toe.translateY 2; setAttr toe.rotateZ "
        "40");
}

void ModeScene::attachLayers()
{
    mel("loadPlugin \"" + testing_support::libraryPath("layerStandIn") + "\"");
    for (const char* mesh : {"sheet", "twin"}) {
        mel("ngst2Layers -e -attach " + path(mesh));
        mel("ngst2Layers -e -addLayer paintLayer -parent -1 " + path(mesh));
    }
}

void ModeScene::fillWeights()
{
    int step = 0;
    for (const std::string mesh : {"sheet", "twin"}) {
        const std::string geometry = mesh == "sheet" ? "[1]" : "[0]", other = mesh == "sheet" ? "[0]" : "[1]";
        for (const std::string& array :
             {"lift.weightList" + geometry + ".weights", "lift.maskList" + geometry + ".mask",
              mesh + "Skin.blendWeights", "face.inputTarget" + other + ".baseWeights",
              "face.inputTarget" + other + ".inputTargetGroup[0].targetWeights", std::string(kTarget)})
            for (unsigned vertex = 0; vertex < kVertices; ++vertex)
                session.graph().plug(array).element(vertex).setNumber(
                    static_cast<double>(static_cast<float>(scattered(++step))));
        for (const std::string target : {"mask", "dq", "0", "1", "2"}) {
            if (!place.isLayer())
                continue;
            std::vector<double> values(kVertices);
            for (double& value : values)
                value = rounded(scattered(++step) * (target < "3" ? 0.5 : 1.0));
            paint(mesh, target, values);
        }
    }
}

void ModeScene::paint(const std::string& mesh, const std::string& target, const std::vector<double>& values)
{
    mel("ngst2Layers -e -id 1 -paintTarget " + target + " -vertexWeights \"" + listText(values) + "\" " +
        path(mesh));
}

std::string ModeScene::arrayOf(const std::string& mesh) const
{
    std::string array = place.array;
    if (mesh == "sheet")
        return array;
    // Blend shapes are edited through their first geometry, whichever mesh is selected.
    if (array.find("lift.") == 0)
        array.replace(array.find("[1]"), 3, "[0]");
    else if (array.find("sheetSkin") == 0)
        array.replace(0, 5, "twin");
    return array;
}

std::vector<double> ModeScene::weights(const std::string& mesh)
{
    if (place.isLayer())
        return melFloats("ngst2Layers -q -id 1 -paintTarget " + std::string(place.target) +
                         " -vertexWeights " + path(mesh));
    std::vector<double> values;
    if (place.isSkin()) {
        for (const std::vector<double>& row : rows(mesh))
            values.push_back(row[column()]);
        return values;
    }
    const host::Plug array = session.graph().plug(arrayOf(mesh));
    for (unsigned vertex = 0; vertex < kVertices; ++vertex)
        values.push_back(array.element(vertex).number());
    return values;
}

void ModeScene::setWeights(const std::vector<double>& values, const std::string& mesh)
{
    if (place.isLayer())
        return paint(mesh, place.target, values);
    for (int vertex = 0; vertex < kVertices; ++vertex)
        setWeight(vertex, values[static_cast<std::size_t>(vertex)], mesh);
}

void ModeScene::setWeight(int vertex, double value, const std::string& mesh)
{
    const auto v = static_cast<std::size_t>(vertex);
    if (place.isLayer()) {
        std::vector<double> values = weights(mesh);
        values[v] = value;
        paint(mesh, place.target, values);
    } else if (place.isSkin()) {
        std::vector<std::vector<double>> all = rows(mesh);
        all[v] = WeightModel::withRoom(all[v], column(), value);
        setRows(all, mesh);
    } else {
        session.graph().plug(arrayOf(mesh)).element(static_cast<unsigned>(vertex)).setNumber(value);
    }
}

std::vector<std::vector<double>> ModeScene::rows(const std::string& mesh)
{
    return skinWeights(session, mesh + "Skin", kVertices, 4);
}

void ModeScene::setRows(const std::vector<std::vector<double>>& values, const std::string& mesh)
{
    const host::Plug list = session.graph().plug(mesh + "Skin.weightList");
    for (unsigned vertex = 0; vertex < kVertices; ++vertex) {
        const host::Plug row = list.element(vertex).child(0);
        for (unsigned influence = 1; influence < 4; ++influence)
            row.element(influence).setNumber(values[vertex][influence]);
    }
}

ModeScene::State ModeScene::state()
{
    State all;
    for (const std::string& mesh : meshes) {
        if (!place.isLayer() && !place.isSkin())
            all.numbers[mesh] = weights(mesh);
        if (place.isSkin())
            all.rows[mesh] = rows(mesh);
        for (const std::string target : {"mask", "dq", "0", "1", "2"})
            if (place.isLayer())
                all.layers[mesh][target] = melFloats("ngst2Layers -q -id 1 -paintTarget " + target +
                                                     " -vertexWeights " + path(mesh));
    }
    return all;
}

void ModeScene::restore(const State& state)
{
    for (const auto& [mesh, values] : state.numbers)
        setWeights(values, mesh);
    for (const auto& [mesh, values] : state.rows)
        setRows(values, mesh);
    for (const auto& [mesh, targets] : state.layers)
        for (const auto& [target, values] : targets)
            paint(mesh, target, values);
}

double ModeScene::stored(double number) const
{
    return place.single ? static_cast<double>(static_cast<float>(number)) : number;
}

Imath::V3d ModeScene::point(int vertex, const std::string& mesh)
{
    return host::shapeGeometry(session.graph().get(mesh + "Shape"))
        ->points()[static_cast<std::size_t>(vertex)];
}

Imath::V2d ModeScene::pixel(const Imath::V3d& world)
{
    short x = 0, y = 0;
    session.viewport().worldToView(world, x, y);
    return {static_cast<double>(x), static_cast<double>(y)};
}

Imath::V3d ModeScene::screenRight()
{
    const Imath::M44d turned = session.viewport().viewMatrix().inverse();
    return {turned[0][0], turned[0][1], turned[0][2]};
}

void ModeScene::lookAt(int vertex, double distance)
{
    const Imath::V3d at = point(vertex);
    for (const char* pivot : {"rotatePivot", "scalePivot"})
        for (unsigned axis = 0; axis < 3; ++axis)
            session.graph().plug(std::string("pair.") + pivot).child(axis).setNumber(at[axis]);
    const Imath::M44d turned = session.viewport().viewMatrix().inverse();
    const Imath::V3d eye = at + distance * Imath::V3d(turned[2][0], turned[2][1], turned[2][2]);
    for (unsigned axis = 0; axis < 3; ++axis)
        session.graph().plug("persp.translate").child(axis).setNumber(eye[axis]);
}

Imath::V2d ModeScene::direction(int vertex, const std::string& mesh)
{
    const std::vector<double> before = weights(mesh);
    const std::vector<std::vector<double>> rowsBefore = rows(mesh);
    const double weight = before[static_cast<std::size_t>(vertex)];
    const double less = stored(weight - kStep);
    const double more = stored(place.probe == WeightPlace::kSteps ? less + 2 * kStep : weight + kStep);
    setWeight(vertex, less, mesh);
    const Imath::V3d low = point(vertex, mesh);
    if (place.isSkin())
        setRows(rowsBefore, mesh);
    setWeight(vertex, more, mesh);
    const Imath::V3d high = point(vertex, mesh);
    if (place.isSkin())
        setRows(rowsBefore, mesh);
    else
        setWeights(before, mesh);
    const Imath::V2d motion = pixel(high) - pixel(low);
    if (motion.length() >= 1)
        return motion / (2 * kStep);
    return pixel(low + (high - low) / (2 * kStep)) - pixel(low);
}

double ModeScene::offsetOf(const Imath::V2d& direction, int dx, int dy)
{
    const double length = std::sqrt(direction.x * direction.x + direction.y * direction.y);
    return (direction.x * dx + direction.y * dy) / length / length;
}

ToolTest::Pixel ModeScene::dragFor(const Imath::V2d& direction, double offset)
{
    return {static_cast<int>(std::lround(direction.x * offset)) + 2,
            static_cast<int>(std::lround(direction.y * offset)) - 1};
}

ToolTest::Pixel ModeScene::at(int vertex, const std::string& mesh)
{
    return pixelOf(mesh + ".vtx[" + std::to_string(vertex) + "]");
}

} // namespace testing_support
