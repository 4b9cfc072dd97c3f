// The scenes of the random edits.
#include "plugin/randomScene.h"

#include "nodes/filterAccess.h"

#include <algorithm>

using namespace testing_support;

namespace {

std::string element(const std::string& array, int index)
{
    return array + "[" + std::to_string(index) + "]";
}

} // namespace

void RandomScene::build(Kind kind)
{
    allowMessages();
    switch (kind) {
    case Kind::kMeshes:
        buildMeshes();
        break;
    case Kind::kPoints:
        buildPoints();
        break;
    case Kind::kBlendShapes:
        buildBlendShapes();
        break;
    default:
        buildLayers();
        break;
    }
    std::vector<ReachShape> known;
    for (std::size_t index = 0; index < shapes.size(); ++index) {
        ReachShape reachShape;
        const auto number = static_cast<int>(index);
        if (model.scene.shapes[index].kind == ModelShape::kMesh) {
            reachShape.isMesh = true;
            const host::GeometryRef geometry = host::shapeGeometry(shape(number));
            for (const auto& edge : static_cast<const host::MeshData&>(*geometry).topology->edges)
                reachShape.edges.push_back({edge[0], edge[1]});
        }
        reachShape.local = [this, number] { return pointsOf(number, false); };
        reachShape.world = [this, number] { return pointsOf(number, true); };
        known.push_back(std::move(reachShape));
    }
    model.reach = ReachModel(std::move(known));
    randomWeights();
    mel("select -cl; softSelect -sse 0; selectPref -preSelectHilite false; viewFit" +
        std::string(kind == Kind::kMeshes ? " sheet other" : ""));
    toolOn();
}

/// Three sheets under one deformer with two maps, each with a skin that blends both kinds of skinning. A
/// point of one lies farther away than pastes reach.
void RandomScene::buildMeshes()
{
    mel("polyPlane -n sheet -w 8 -h 6 -sx 5 -sy 3 -ch 0; polyPlane -n other -w 7 -h 5 -sx 5 -sy 3 -ch 0;"
        "setAttr persp.rotate -type double3 -60 10 0; xform -r -os -t 0 0 7 other.vtx[*];"
        "setAttr other.translate -type double3 0.5 0 1; polyPlane -n stray -w 2 -h 4 -sx 1 -sy 2 -ch 0;"
        "setAttr stray.translateX 6; xform -r -os -t 0 1500 0 stray.vtx[5]");
    for (const char* name : {"sheet", "other", "stray"})
        addShape(name);
    mel("select sheet other stray; maskedOffset -n lift -o 0 2.5 0.5; select -cl");
    addDeformer("lift", ModelDeformer::kMasked);
    model.scene.deformers.back().offset = {0, 2.5, 0.5};
    addJoints();
    for (const char* name : {"sheet", "other", "stray"})
        addSkin(name, {"hip", "knee", "toe"});
    pose();
    edit("-deformer lift -plug mask -influence knee");
    model.setDeformer("lift");
    pairings = {
        {Mode::kDefault, "lift"}, {Mode::kPlug, "lift"}, {Mode::kSkin, "lift"}, {Mode::kBlend, "lift"}};
}

/// Everything that has points: a curve, a lattice with a mesh in it, a surface, a mesh of which a deformer
/// has only a part; a deformer without a set, and skins of two and three joints.
void RandomScene::buildPoints()
{
    mel("setAttr persp.rotate -type double3 -50 15 0; polyPlane -n bed -w 6 -h 3 -sx 3 -sy 2 -ch 0;"
        "curve -n rail -d 3 -p -4 0 6 -p -2 1 6 -p 0 0 6 -p 2 1 6 -p 3 0 6 -p 4 0 7");
    addShape("bed"); // as it is before the lattice
    addShape("rail");
    mel("select bed; lattice -dv 3 2 3 -oc 1 -n cage bed; nurbsPlane -n cloth -w 4 -lr 1 -u 2 -v 1 -ax 0 1 0;"
        "setAttr cloth.translateX 7; polyPlane -n sheet -w 5 -h 4 -sx 3 -sy 3 -ch 0; setAttr "
        "sheet.translateX -7");
    for (const char* name : {"cageLattice", "cloth", "sheet"})
        addShape(name);
    model.scene.shapes[0].bent = true;
    mel("maskedOffset -n lift -o 0.2 2 0.5 rail cageLattice.pt[0:2][0][0:2] cageLattice.pt[1][1][0:2] cloth "
        "sheet.vtx[0:9]; cluster -n clu -uct 1 cageLattice rail; setAttr cluHandle.translate -type double3 0 "
        "1 "
        "1;"
        "select rail sheet; softMod -n soft -frd 12 -fc 0 0 0; setAttr softHandle.translateY 2; select -cl");
    addDeformer("lift", ModelDeformer::kMasked);
    model.scene.deformers.back().offset = {0.2, 2, 0.5};
    addDeformer("clu", ModelDeformer::kWeighted);
    model.scene.deformers.back().offset = {0, 1, 1};
    model.scene.deformers.back().inWorld = true;
    addDeformer("soft", ModelDeformer::kWeighted);
    model.scene.deformers.back().offset = {0, 2, 0};
    model.scene.deformers.back().inWorld = true;
    model.scene.deformers.back().falloffRadius = 12;
    addJoints();
    addSkin("rail", {"hip", "knee", "toe"});
    addSkin("cloth", {"hip", "toe", "knee"});
    addSkin("sheet", {"knee", "toe"});
    addSkin("bed", {"hip", "toe"});
    pose();
    edit("-deformer lift -plug mask -influence knee");
    model.setDeformer("lift");
    pairings = {{Mode::kDefault, "lift"}, {Mode::kDefault, "clu"}, {Mode::kDefault, "soft"},
                {Mode::kPlug, "lift"},    {Mode::kSkin, "lift"},   {Mode::kBlend, "clu"}};
}

/// A blend shape with two targets on two meshes, below a deformer with maps.
void RandomScene::buildBlendShapes()
{
    mel("setAttr persp.rotate -type double3 -60 10 0");
    for (const std::string end : {"", "Up", "Wide"})
        mel("polyPlane -n base" + end + " -w 8 -h 6 -sx 5 -sy 3 -ch 0; polyPlane -n second" + end +
            " -w 5 -h 4 -sx 3 -sy 2 -ch 0; xform -r -os -t 0 0 7 second" + end +
            ".vtx[*]; createNode transform -n pair" + end + "; parent base" + end + " second" + end +
            " pair" + end);
    addShape("base");
    addShape("second");
    mel("move -r 0 2 0.5 baseUp.vtx[*] secondUp.vtx[*]; move -r 0.5 0 2 baseWide.vtx[*] secondWide.vtx[*];"
        "blendShape -n face pairUp pairWide pair; delete pairUp pairWide;"
        "blendShape -e -w 0 0.75 -w 1 0.625 face; maskedOffset -n lift -o 0 2 0.5 base second; select -cl");
    addDeformer("lift", ModelDeformer::kMasked);
    model.scene.deformers.back().offset = {0, 2, 0.5};
    addDeformer("face", ModelDeformer::kBlendShape, {"pairUp", "pairWide"});
    model.scene.deformers.back().targetOffsets = {{0, 0.75 * 2, 0.75 * 0.5}, {0.625 * 0.5, 0, 0.625 * 2}};
    edit("-deformer lift -plug mask");
    edit("-deformer face");
    edit("-weightMode blendShapeTarget -target pairUp");
    model.setDeformer("face");
    model.setMode(Mode::kTarget);
    model.settings.target = "pairUp";
    targetNames = {"pairUp", "pairWide", "pairUp", "pairWide", "nobody"};
    pairings = {{Mode::kTarget, "face"},
                {Mode::kTarget, "face"},
                {Mode::kBase, "face"},
                {Mode::kDefault, "lift"},
                {Mode::kPlug, "lift"}};
}

/// Two skinned meshes with layers, one of them in a group, below a deformer with maps; a third one without.
void RandomScene::buildLayers()
{
    mel("setAttr persp.rotate -type double3 -60 10 0; polyPlane -n sheet -w 8 -h 6 -sx 4 -sy 2 -ch 0;"
        "polyPlane -n other -w 7 -h 5 -sx 3 -sy 2 -ch 0; xform -r -os -t 0 0 7 other.vtx[*];"
        "polyPlane -n bare -w 3 -h 3 -sx 2 -sy 1 -ch 0; xform -r -os -t 7 0 3 bare.vtx[*]");
    for (const char* name : {"sheet", "other", "bare"})
        addShape(name);
    mel("maskedOffset -n lift -o 0 2.5 0.5 sheet other bare; select -cl");
    addDeformer("lift", ModelDeformer::kMasked);
    model.scene.deformers.back().offset = {0, 2.5, 0.5};
    addJoints();
    for (const char* name : {"sheet", "other", "bare"})
        addSkin(name, {"hip", "knee", "toe"});
    pose();
    mel("loadPlugin \"" + testing_support::libraryPath("layerStandIn") + "\"");
    addLayers(0, {{1, "paint", -1, 0.9}, {2, "group", -1, 0.8}, {3, "inner", 2, 1.0}});
    addLayers(1, {{1, "below", -1, 0.7}, {2, "paint", -1, 1.0}});
    edit("-deformer lift -plug mask -influence knee");
    edit("-ngLayer paint");
    model.setDeformer("lift");
    model.settings.layer = "paint";
    layerNames = {"paint", "paint", "paint", "paint", "group", "nowhere"};
    pairings = {{Mode::kMask, "lift"},      {Mode::kLayerBlend, "lift"}, {Mode::kInfluence, "lift"},
                {Mode::kMask, "lift"},      {Mode::kLayerBlend, "lift"}, {Mode::kInfluence, "lift"},
                {Mode::kInfluence, "lift"}, {Mode::kSkin, "lift"},       {Mode::kBlend, "lift"},
                {Mode::kDefault, "lift"}};
    // Layers are known from the first press on.
    toolOn();
    press({1, 1});
    release({1, 1});
}

void RandomScene::addShape(const std::string& name)
{
    host::DagNode& node = *host::componentShape(session.graph().get(name));
    shapes.emplace_back(&node);
    ModelShape known;
    known.name = name;
    known.rest = pointsOf(static_cast<int>(shapes.size()) - 1, false);
    known.size = static_cast<int>(known.rest.size());
    const std::vector<double> place = melFloats("getAttr " + name + ".translate");
    known.place = {place[0], place[1], place[2]};
    const std::vector<double> scale = melFloats("getAttr " + name + ".scale");
    known.scale = {scale[0], scale[1], scale[2]};
    const host::Geometry::Kind kind = host::shapeGeometry(node)->kind();
    known.kind = kind == host::Geometry::Kind::kMesh      ? ModelShape::kMesh
                 : kind == host::Geometry::Kind::kCurve   ? ModelShape::kCurve
                 : kind == host::Geometry::Kind::kSurface ? ModelShape::kSurface
                                                          : ModelShape::kLattice;
    model.scene.shapes.push_back(std::move(known));
    model.scene.weights.skin.emplace_back();
    model.scene.weights.painted.emplace_back();
    rows.emplace_back();
}

void RandomScene::addMap(const Key& key, const std::string& plug, int size)
{
    maps[key] = {session.graph().plug(plug), size};
}

void RandomScene::addDeformer(const std::string& name, ModelDeformer::Kind kind,
                              const std::vector<std::string>& targets)
{
    ModelDeformer deformer;
    deformer.name = name;
    deformer.kind = kind;
    deformer.targets = targets;
    host::Node& node = session.graph().get(name);
    int most = 0;
    for (const std::uint32_t geometry : host::filterIndices(node)) {
        const int shape = indexOf(host::outputShape(node, geometry));
        const auto number = static_cast<int>(geometry);
        const int size = model.scene.shapes[at(shape)].size;
        most = std::max(most, size);
        deformer.geometries.push_back(shape);
        deformer.members[shape] = host::filterMembers(node, geometry);
        if (kind != ModelDeformer::kBlendShape)
            addMap(Key(name, "weights", number), element(name + ".weightList", number) + ".weights", size);
        if (kind == ModelDeformer::kMasked)
            addMap(Key(name, "mask", number), element(name + ".maskList", number) + ".mask", size);
    }
    if (kind == ModelDeformer::kBlendShape) {
        addMap(Key(name, "base", 0), name + ".inputTarget[0].baseWeights", most);
        for (std::size_t target = 0; target < targets.size(); ++target)
            addMap(Key(name, "target" + std::to_string(target), 0),
                   element(name + ".inputTarget[0].inputTargetGroup", static_cast<int>(target)) +
                       ".targetWeights",
                   most);
    }
    model.scene.deformers.push_back(std::move(deformer));
}

void RandomScene::addJoints()
{
    mel("select -cl; joint -n hip -p -4 0 0; joint -n knee -p 0 0 0; joint -n toe -p 3 0 0; select -cl");
}

void RandomScene::addSkin(const std::string& name, const std::vector<std::string>& joints)
{
    std::string command = "skinCluster -tsb -mi 3 -dr 2 -n " + name + "Skin";
    for (const std::string& joint : joints)
        command += " " + joint;
    mel(command + " " + name + "; setAttr " + name + "Skin.skinningMethod 2");
    for (std::size_t index = 0; index < model.scene.shapes.size(); ++index) {
        ModelShape& known = model.scene.shapes[index];
        if (known.name != name)
            continue;
        known.influences = static_cast<int>(joints.size());
        known.joints = joints;
        const auto edited = std::find(joints.begin(), joints.end(), "knee");
        known.influence = edited == joints.end() ? -1 : static_cast<int>(edited - joints.begin());
        const auto still = std::find(joints.begin(), joints.end(), "hip");
        known.hip = still == joints.end() ? -1 : static_cast<int>(still - joints.begin());
        rows[index] = session.graph().plug(name + "Skin.weightList");
        addMap(Key(name, "blend", 0), name + "Skin.blendWeights", known.size);
    }
}

void RandomScene::pose()
{
    mel("setAttr knee.rotateZ 50; setAttr knee.rotateX 20; setAttr knee.translateY 1.5");
}

/// In the order of their ids. All of it is painted, so that every array has a value for every vertex.
void RandomScene::addLayers(int shapeIndex, const std::vector<ModelLayer>& layers)
{
    ModelShape& known = model.scene.shapes[at(shapeIndex)];
    const std::string path = shapePath(shapeIndex);
    known.layers = layers;
    for (int point = 0; point < known.size; ++point)
        maps.at(Key(known.name, "blend", 0)).plug.element(static_cast<unsigned>(point)).setNumber(fraction());
    const Weights before = actual();
    known.baseRows = before.skin[at(shapeIndex)];
    known.baseBlend = before.numbers.at(Key(known.name, "blend", 0));
    mel("ngst2Layers -e -attach " + path);
    for (const ModelLayer& layer : layers) {
        mel("ngst2Layers -e -addLayer " + layer.name + " -parent " + std::to_string(layer.parent) + " " +
            path + "; ngst2Layers -e -id " + std::to_string(layer.id) + " -opacity " + exact(layer.opacity) +
            " " + path);
        std::vector<std::string> targets = {"mask"};
        if (layer.name != "group")
            targets.insert(targets.end(), {"dq", "0", "1", "2"});
        for (const std::string& target : targets) {
            Values values;
            for (int point = 0; point < known.size; ++point)
                values.push_back(fraction() * (target.size() == 1 ? 0.6 : 1.0));
            const std::string key = std::to_string(layer.id) + " " + target;
            paint(shapeIndex, key, values);
            model.scene.weights.painted[at(shapeIndex)][key] = values;
        }
    }
}

/// What layers make of skins is left alone.
void RandomScene::randomWeights()
{
    for (auto& [key, map] : maps) {
        const auto isLayered = [&, name = std::get<0>(key)](const ModelShape& known) {
            return known.name == name && !known.layers.empty();
        };
        if (std::any_of(model.scene.shapes.begin(), model.scene.shapes.end(), isLayered))
            continue;
        for (int point = 0; point < map.size; ++point)
            map.plug.element(static_cast<unsigned>(point)).setNumber(narrowed(fraction()));
    }
    model.scene.weights = actual();
}
