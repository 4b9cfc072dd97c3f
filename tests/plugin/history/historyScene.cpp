#include "plugin/history/historyScene.h"

#include "selection/selectionState.h"
#include "undo/undoQueue.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace testing_support {

namespace {

std::string exact(double number)
{
    char text[64];
    std::snprintf(text, sizeof text, "%.17g", number);
    return text;
}

std::string filledIn(std::string text, int mesh)
{
    const std::pair<std::string, std::string> parts[] = {{"MESH", HistoryScene::meshName(mesh)},
                                                         {"PLACE", std::to_string(mesh)}};
    for (const auto& [name, value] : parts)
        for (std::size_t at; (at = text.find(name)) != std::string::npos;)
            text.replace(at, name.size(), value);
    return text;
}

double narrowed(double number)
{
    return static_cast<double>(static_cast<float>(number));
}

double held(double number)
{
    return std::min(std::max(number, 0.0), 1.0);
}

/// A weight as redo works it out: upper clamp first, and in single precision after every step where the mode
/// stores that.
double redoneWeight(const StrokeRecord& stroke, double old, double falloff)
{
    const auto kept = [&](double weight) { return stroke.row->storesFloats ? narrowed(weight) : weight; };
    if (stroke.row->isLayer())
        return held(old + stroke.offset * falloff);
    double weight = kept(old + stroke.offset * falloff);
    if (stroke.clamps.max)
        weight = kept(std::min(weight, stroke.clamps.high));
    if (stroke.clamps.min)
        weight = kept(std::max(weight, static_cast<double>(stroke.clamps.low)));
    return weight;
}

constexpr std::size_t kInfluences = 3;

std::string layerArray(const ModeRow& row, int mesh, std::size_t influence)
{
    return std::string(row.array) + " " + std::to_string(influence) + " " + std::to_string(mesh);
}

void putWhole(Change& change, const std::string& array, const Numbers& numbers)
{
    for (std::size_t index = 0; index < numbers.size(); ++index)
        change[array][index] = numbers[index];
}

/// The other influences share what is left, in their old proportions.
void writeSkinRow(Change& change, const StrokeRecord& stroke, const Piece& piece, std::size_t k,
                  const State& old, const State& current)
{
    const std::string array = stroke.row->arrayOf(piece.mesh);
    const std::size_t first = static_cast<std::size_t>(piece.vertices[k]) * kInfluences;
    const std::size_t edited = HistoryScene::knee(piece.mesh);
    const double weight = redoneWeight(stroke, old.at(array)[first + edited], piece.falloff[k]);
    double others = 0;
    for (std::size_t j = 0; j < kInfluences; ++j)
        others += j == edited ? 0 : current.at(array)[first + j];
    for (std::size_t j = 0; j < kInfluences; ++j) {
        const double before = current.at(array)[first + j];
        change[array][first + j] = j == edited  ? weight
                                   : others > 0 ? before * (std::max(0.0, 1 - weight) / others)
                                                : before;
    }
}

/// What is added beyond one in sum the others get too, and what is taken away they get when it is shared out.
void shareOut(Change& change, const StrokeRecord& stroke, int mesh, const State& old, const Numbers& values)
{
    const std::size_t edited = HistoryScene::knee(mesh);
    const Numbers& before = old.at(layerArray(*stroke.row, mesh, edited));
    for (std::size_t v = 0; v < values.size(); ++v) {
        double sum = 0, handed = 0;
        for (std::size_t j = 0; j < kInfluences; ++j)
            sum += j == edited ? 0 : old.at(layerArray(*stroke.row, mesh, j))[v];
        if (values[v] > before[v] && sum + values[v] > 1)
            handed = 1 - (sum + values[v]);
        else if (values[v] < before[v] && stroke.distribute)
            handed = values[v] - before[v];
        for (std::size_t j = 0; j < kInfluences; ++j) {
            const std::string array = layerArray(*stroke.row, mesh, j);
            const double weight = old.at(array)[v];
            change[array][v] = j == edited ? values[v] : sum == 0 ? weight : weight - handed * (weight / sum);
        }
    }
}

} // namespace

std::ostream& operator<<(std::ostream& out, const ModeRow& row)
{
    return out << row.mode;
}

const std::vector<ModeRow>& modeRows()
{
    static const std::vector<ModeRow> rows = {
        {"default", "-deformer lift", "default lift", ModeRow::kPlain, true, false, "weights",
         "lift.weightList[PLACE].weights"},
        {"plug", "-deformer lift -plug mask", "plug lift.mask", ModeRow::kPlain, true, false, "mask",
         "lift.maskList[PLACE].mask"},
        {"skinCluster", "-deformer lift -influence knee", "skinCluster knee", ModeRow::kSkin, false, false,
         "skin", ""},
        {"dualQuaternion", "-deformer lift", "dualQuaternion", ModeRow::kPlain, false, false, "blend",
         "MESHSkin.blendWeights"},
        {"blendShapeTarget", "-deformer mix -target frown", "blendShapeTarget mix.frown", ModeRow::kPlain,
         true, true, "target 2", "mix.inputTarget[PLACE].inputTargetGroup[2].targetWeights"},
        {"blendShapeBase", "-deformer mix", "blendShapeBase mix", ModeRow::kPlain, true, true, "base",
         "mix.inputTarget[PLACE].baseWeights"},
        {"ngSkinToolsMask", "-deformer lift -ngLayer skinLayer", "ngMask skinLayer", ModeRow::kLayer, false,
         false, "layer mask", ""},
        {"ngSkinToolsDualQuaternion", "-deformer lift -ngLayer skinLayer", "ngDualQuaternion skinLayer",
         ModeRow::kLayer, false, false, "layer dq", ""},
        {"ngSkinToolsInfluence", "-deformer lift -ngLayer skinLayer -influence knee",
         "ngInfluence skinLayer.knee", ModeRow::kLayerInfluence, false, false, "layer", ""}};
    return rows;
}

const ModeRow& rowOf(const std::string& mode)
{
    return *std::find_if(modeRows().begin(), modeRows().end(),
                         [&](const ModeRow& row) { return row.mode == mode; });
}

std::string ModeRow::arrayOf(int mesh) const
{
    const int place = firstGeometryOnly ? 0 : mesh;
    return kind == kLayerInfluence ? layerArray(*this, mesh, HistoryScene::knee(mesh))
                                   : std::string(array) + " " + std::to_string(place);
}

std::string ModeRow::plugOf(int mesh) const
{
    return filledIn(plug, firstGeometryOnly ? 0 : mesh);
}

const std::string& HistoryScene::meshName(int mesh)
{
    static const std::string names[kMeshes] = {"sheet", "twin", "coarse"};
    return names[mesh];
}

std::size_t HistoryScene::knee(int mesh)
{
    const std::size_t places[kMeshes] = {1, 0, 2};
    return places[mesh];
}

void HistoryScene::build(const ModeRow& mode)
{
    buildMeshes();
    buildBlendShape();
    mel("maskedOffset -n lift -o 0 0 0 sheet twin coarse");
    bind(!mode.isLayer());
    mel("setAttr persp.rotate -type double3 -60 10 0; viewFit sheet twin coarse; select -cl;"
        "selectPref -preSelectHilite false");
    if (mode.isLayer())
        attachLayers();
    choose(mode);
    setState(randomState(1));
    session.undo().flush();
}

void HistoryScene::buildMeshes()
{
    mel("createNode transform -n all");
    const char* const sizes[kMeshes] = {"-w 8 -h 6 -sx 4 -sy 3", "-w 8 -h 6 -sx 4 -sy 3",
                                        "-w 9 -h 5 -sx 2 -sy 2"};
    const int away[kMeshes] = {0, -9, 8};
    for (int mesh = 0; mesh < kMeshes; ++mesh) {
        const std::string name = meshName(mesh);
        mel("polyPlane -ch 0 -n " + name + " " + sizes[mesh] + "; parent " + name + " all; setAttr " + name +
            ".translateZ " + std::to_string(away[mesh]));
    }
    if (!beforeDeformers.empty())
        mel(beforeDeformers);
    for (int mesh = 0; mesh < kMeshes; ++mesh) {
        restPoints[mesh].clear();
        for (int vertex = 0; vertex < size(mesh); ++vertex)
            restPoints[mesh].push_back(melFloats("pointPosition -l " + vertexName(mesh, vertex)));
    }
}

/// Two targets, 0 and 2, of a shape for every mesh; the deltas stay when the shapes are deleted.
void HistoryScene::buildBlendShape()
{
    const std::pair<std::string, std::string> targets[] = {{"smile", "0 4 1"}, {"frown", "1 4 0"}};
    for (const auto& [target, delta] : targets) {
        mel("createNode transform -n " + target);
        for (int mesh = 0; mesh < kMeshes; ++mesh) {
            const std::string copy = target + meshName(mesh);
            mel("duplicate -n " + copy + " " + meshName(mesh) + "; parent " + copy + " " + target +
                "; xform -r -os -t " + delta + " " + copy + ".vtx[*]");
        }
    }
    mel("blendShape -n mix smile all; blendShape -e -t all 2 frown 1 mix; delete smile frown");
}

/// The influences in another order on each mesh. With a gap their logical indices are 0, 2 and 3.
void HistoryScene::bind(bool withGap)
{
    mel("select -cl; joint -n hip -p -4 0 0; joint -n knee -p 0 0 0; joint -n toe -p 3 0 0;"
        "select -cl; joint -n gone");
    const std::vector<std::string> orders[kMeshes] = {
        {"hip", "knee", "toe"}, {"knee", "toe", "hip"}, {"toe", "hip", "knee"}};
    for (int mesh = 0; mesh < kMeshes; ++mesh) {
        const std::vector<std::string>& order = orders[mesh];
        const std::string skin = meshName(mesh) + "Skin";
        mel("skinCluster -tsb -mi 3 -dr 2 -n " + skin + " " + order[0] + (withGap ? " gone " : " ") +
            order[1] + " " + order[2] + " " + meshName(mesh) + "; setAttr " + skin + ".skinningMethod 2");
        if (withGap)
            mel("skinCluster -e -ri gone " + skin);
        logical[mesh] = withGap ? std::vector<unsigned>{0, 2, 3} : std::vector<unsigned>{0, 1, 2};
    }
}

void HistoryScene::attachLayers()
{
    mel("loadPlugin \"" + testing_support::libraryPath("layerStandIn") + "\"");
    for (int mesh = 0; mesh < kMeshes; ++mesh) {
        mel("ngst2Layers -e -attach " + shape(mesh));
        for (int decoy = 0; decoy < mesh; ++decoy)
            mel("ngst2Layers -e -addLayer decoy " + shape(mesh));
        layerIds[mesh] = melInt("ngst2Layers -e -addLayer skinLayer " + shape(mesh));
    }
    hasLayers = true;
}

void HistoryScene::choose(const ModeRow& mode)
{
    // The deformer is looked up in another mode than that of the skins, which take any name.
    edit("-weightMode default");
    edit(mode.flags);
    edit(std::string("-weightMode ") + mode.mode);
    chosen = &mode;
}

void HistoryScene::pose()
{
    const bool turns = std::string(chosen->mode).find("ualQuaternion") != std::string::npos;
    if (turns)
        mel("setAttr knee.rotateX 100");
    else if (chosen->isLayer() || chosen->kind == ModeRow::kSkin)
        mel("setAttr knee.translateY 6; setAttr toe.translateY -1");
    else
        mel("setAttr lift.offsetY 5; setAttr lift.offsetZ 1; setAttr mix.smile 1; setAttr mix.frown 1");
    mel("viewFit sheet");
    session.undo().flush();
}

void HistoryScene::unrecorded(const std::string& text)
{
    mel("undoInfo -stateWithoutFlush off; " + text + "; undoInfo -stateWithoutFlush on");
}

std::string HistoryScene::layerCall(int mesh, const std::string& target) const
{
    return " -id " + std::to_string(layerIds[mesh]) + " -paintTarget " + target + " ";
}

Numbers HistoryScene::painted(int mesh, const std::string& target)
{
    return melFloats("ngst2Layers -q" + layerCall(mesh, target) + "-vertexWeights " + shape(mesh));
}

void HistoryScene::paint(int mesh, const std::string& target, const Numbers& weights)
{
    std::string text;
    for (const double weight : weights)
        text += (text.empty() ? "" : ",") + exact(weight);
    unrecorded("ngst2Layers -e" + layerCall(mesh, target) + "-vertexWeights \"" + text + "\" " + shape(mesh));
}

Numbers HistoryScene::readArray(const std::string& plug, std::size_t count)
{
    const host::Plug array = session.graph().plug(plug);
    Numbers numbers;
    for (std::size_t index = 0; index < count; ++index)
        numbers.push_back(array.element(static_cast<unsigned>(index)).number());
    return numbers;
}

void HistoryScene::writeArray(const std::string& plug, const Numbers& numbers)
{
    const host::Plug array = session.graph().plug(plug);
    for (std::size_t index = 0; index < numbers.size(); ++index)
        array.element(static_cast<unsigned>(index)).setNumber(numbers[index]);
}

Numbers HistoryScene::readSkin(int mesh)
{
    const host::Plug rows = session.graph().plug(meshName(mesh) + "Skin.weightList");
    Numbers numbers;
    for (int vertex = 0; vertex < size(mesh); ++vertex)
        for (const unsigned column : logical[mesh])
            numbers.push_back(rows.element(static_cast<unsigned>(vertex)).child(0).element(column).number());
    return numbers;
}

Numbers HistoryScene::edited(int mesh)
{
    const std::string array = chosen->arrayOf(mesh);
    if (chosen->kind == ModeRow::kSkin)
        return readSkin(mesh);
    if (chosen->kind == ModeRow::kPlain)
        return readArray(chosen->plugOf(mesh), static_cast<std::size_t>(size(mesh)));
    const std::size_t first = array.find(' ') + 1; // "layer TARGET MESH"
    return painted(mesh, array.substr(first, array.rfind(' ') - first));
}

State HistoryScene::state()
{
    State now;
    for (int mesh = 0; mesh < kMeshes; ++mesh) {
        const std::string place = " " + std::to_string(mesh);
        const auto count = static_cast<std::size_t>(size(mesh));
        for (const ModeRow& row : modeRows())
            if (row.kind == ModeRow::kPlain && !(hasLayers && row.array == std::string("blend")))
                now[row.array + place] = readArray(filledIn(row.plug, mesh), count);
        now["target 0" + place] = readArray(
            "mix.inputTarget[" + std::to_string(mesh) + "].inputTargetGroup[0].targetWeights", count);
        if (hasLayers) {
            // What the layers make of the skin is theirs.
            for (const char* target : {"mask", "dq", "0", "1", "2"})
                now["layer " + std::string(target) + place] = painted(mesh, target);
            continue;
        }
        now["skin" + place] = readSkin(mesh);
    }
    return now;
}

void HistoryScene::setState(const State& wanted)
{
    for (int mesh = 0; mesh < kMeshes; ++mesh) {
        const std::string place = " " + std::to_string(mesh);
        for (const ModeRow& row : modeRows())
            if (row.kind == ModeRow::kPlain && wanted.count(row.array + place))
                writeArray(filledIn(row.plug, mesh), wanted.at(row.array + place));
        writeArray("mix.inputTarget[" + std::to_string(mesh) + "].inputTargetGroup[0].targetWeights",
                   wanted.at("target 0" + place));
        if (hasLayers) {
            for (const char* target : {"mask", "dq", "0", "1", "2"})
                paint(mesh, target, wanted.at("layer " + std::string(target) + place));
            continue;
        }
        const host::Plug rows = session.graph().plug(meshName(mesh) + "Skin.weightList");
        const Numbers& skin = wanted.at("skin" + place);
        for (std::size_t index = 0; index < skin.size(); ++index)
            rows.element(static_cast<unsigned>(index / kInfluences))
                .child(0)
                .element(logical[mesh][index % kInfluences])
                .setNumber(skin[index]);
    }
}

State HistoryScene::randomState(unsigned seed)
{
    std::mt19937 random(seed);
    const auto fraction = [&] { return static_cast<double>(random() % 10001) / 10000.0; };
    State wanted;
    for (int mesh = 0; mesh < kMeshes; ++mesh) {
        const std::string place = " " + std::to_string(mesh);
        std::vector<std::string> arrays = {"weights", "mask", "target 0", "target 2", "base"};
        for (const char* layer : {"mask", "dq", "0", "1", "2"})
            if (hasLayers)
                arrays.push_back("layer " + std::string(layer));
        if (!hasLayers)
            arrays.push_back("blend");
        for (const std::string& array : arrays)
            for (int vertex = 0; vertex < size(mesh); ++vertex) {
                const double number = fraction();
                const bool stored = array == "blend" || array.compare(0, 5, "layer") == 0;
                wanted[array + place].push_back(stored ? number : narrowed(number));
            }
        for (int vertex = 0; vertex < size(mesh) && !hasLayers; ++vertex) {
            const double first = 0.1 + 0.4 * fraction(), second = 0.05 + 0.3 * fraction();
            for (const double weight : {first, second, 1 - first - second})
                wanted["skin" + place].push_back(weight);
        }
    }
    return wanted;
}

Pieces HistoryScene::pieces()
{
    Pieces found;
    const host::RichSelection rich = session.selection().rich();
    for (const host::SelectionList* half : {&rich.selection, &rich.symmetry})
        for (const host::SelectionItem& item : half->items)
            for (int mesh = 0; mesh < kMeshes; ++mesh)
                if (item.component && item.node.get() == &session.graph().get(shape(mesh))) {
                    Numbers falloff(item.component->elements.size(), 1.0);
                    for (std::size_t k = 0; k < item.component->weights.size(); ++k)
                        falloff[k] = static_cast<double>(item.component->weights[k]);
                    found.push_back({mesh, item.component->elements, falloff});
                }
    return found;
}

State HistoryScene::clickableState(unsigned seed)
{
    State wanted = randomState(seed);
    for (auto& [array, numbers] : wanted)
        if (array.compare(0, 4, "skin") != 0)
            numbers[kClicked] = array == "layer 0 0" || array == "layer 2 0" ? 0.25 : 0.5;
    if (hasLayers && chosen->array != std::string("layer mask"))
        wanted["layer mask 0"][kClicked] = 1;
    for (std::size_t j = 0; j < kInfluences && !hasLayers; ++j)
        wanted["skin 0"][kClicked * kInfluences + j] = j == knee(0) ? 0.5 : 0.25;
    return wanted;
}

void HistoryScene::startTool()
{
    const Pixel corner = {2, 2};
    toolOn();
    press(corner);
    release(corner);
}

ToolTest::Pixel HistoryScene::dragFor(double more)
{
    const State before = state();
    const std::string array = chosen->arrayOf(0);
    Pixel at[2];
    for (const int high : {0, 1}) {
        State nudged = before;
        Numbers& numbers = nudged[array];
        const double weight = high ? 0.75 : 0.25;
        const std::size_t row = kClicked * kInfluences;
        for (std::size_t j = 0; chosen->kind == ModeRow::kSkin && j < kInfluences; ++j)
            numbers[row + j] = j == knee(0) ? weight : (1 - weight) / 2;
        if (chosen->kind != ModeRow::kSkin)
            numbers[kClicked] = weight;
        setState(nudged);
        at[high] = pixelOf(vertexName(0, kClicked));
    }
    setState(before);
    const double x = at[1].x - at[0].x, y = at[1].y - at[0].y;
    EXPECT_GT(std::hypot(x, y), 10) << "the weight moves next to nothing";
    return {static_cast<int>(std::lround(x * 2 * more)), static_cast<int>(std::lround(y * 2 * more))};
}

void HistoryScene::strokeBy(Pixel motion)
{
    stroke(vertexName(0, kClicked), motion.x, motion.y, {}, 2);
}

void HistoryScene::setClamps(const Clamps& clamps)
{
    edit(std::string("-clampMin ") + (clamps.min ? "true" : "false") + " -clampMax " +
         (clamps.max ? "true" : "false") + " -weightMin " + std::to_string(clamps.low) + " -weightMax " +
         exact(clamps.high));
}

Change redoneStroke(const StrokeRecord& stroke, const State& old, const State& current)
{
    Change change;
    for (const Piece& piece : stroke.pieces) {
        const std::string array = stroke.row->arrayOf(piece.mesh);
        Numbers whole = stroke.row->isLayer() ? old.at(array) : Numbers();
        for (std::size_t k = 0; k < piece.vertices.size(); ++k) {
            const auto v = static_cast<std::size_t>(piece.vertices[k]);
            if (stroke.row->kind == ModeRow::kSkin)
                writeSkinRow(change, stroke, piece, k, old, current);
            else if (stroke.row->kind == ModeRow::kPlain)
                change[array][v] = redoneWeight(stroke, old.at(array)[v], piece.falloff[k]);
            else
                whole[v] = redoneWeight(stroke, whole[v], piece.falloff[k]);
        }
        if (stroke.row->kind == ModeRow::kLayer)
            putWhole(change, array, whole);
        if (stroke.row->kind == ModeRow::kLayerInfluence)
            shareOut(change, stroke, piece.mesh, old, whole);
    }
    return change;
}

Change undoneStroke(const StrokeRecord& stroke, const State& old)
{
    if (stroke.row->kind == ModeRow::kLayer)
        return {}; // masks and dual-quaternion weights of layers keep the stroke
    if (stroke.row->kind != ModeRow::kLayerInfluence)
        return undonePaste(*stroke.row, stroke.pieces, old);
    Change change;
    for (const Piece& piece : stroke.pieces) // the other influences keep what was shared out to them
        putWhole(change, stroke.row->arrayOf(piece.mesh), old.at(stroke.row->arrayOf(piece.mesh)));
    return change;
}

Change undonePaste(const ModeRow& row, const Pieces& target, const State& old)
{
    Change change;
    for (const Piece& piece : target) {
        const std::string array = row.arrayOf(piece.mesh);
        if (row.kind == ModeRow::kLayer)
            putWhole(change, array, old.at(array));
        if (row.kind == ModeRow::kLayerInfluence)
            for (std::size_t j = 0; j < kInfluences; ++j)
                putWhole(change, layerArray(row, piece.mesh, j), old.at(layerArray(row, piece.mesh, j)));
        for (const int vertex : piece.vertices) {
            const auto v = static_cast<std::size_t>(vertex);
            if (row.kind == ModeRow::kPlain)
                change[array][v] = old.at(array)[v];
            for (std::size_t j = 0; row.kind == ModeRow::kSkin && j < kInfluences; ++j)
                change[array][v * kInfluences + j] = old.at(array)[v * kInfluences + j];
        }
    }
    return change;
}

State changed(State state, const Change& change)
{
    for (const auto& [array, numbers] : change)
        for (const auto& [index, number] : numbers)
            state[array][index] = number;
    return state;
}

void expectState(const State& actual, const State& expected, const std::string& what)
{
    ASSERT_EQ(actual.size(), expected.size()) << what;
    for (const auto& [array, numbers] : expected) {
        const Numbers& found = actual.at(array);
        ASSERT_EQ(found.size(), numbers.size()) << what << ": " << array;
        const bool doubles = array.compare(0, 4, "skin") == 0 || array.compare(0, 5, "blend") == 0 ||
                             array.compare(0, 5, "layer") == 0;
        const double tolerance = doubles ? 1e-12 : 2e-7;
        for (std::size_t index = 0; index < numbers.size(); ++index)
            if (!(std::abs(found[index] - numbers[index]) <= tolerance)) {
                ADD_FAILURE() << what << ": " << array << " at " << index << " is " << found[index]
                              << " and not " << numbers[index];
                break;
            }
    }
}

} // namespace testing_support
