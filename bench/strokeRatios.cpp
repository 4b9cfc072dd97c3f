// Drag events through the loaded plug-in, all points selected, without labels; nothing pulls the mesh.
#include "graph/graph.h"
#include "graph/node.h"
#include "graph/numericArray.h"
#include "plainStroke.h"
#include "ratios.h"
#include "stroke.h"

#include <random>

namespace bench {

namespace {

struct Mode {
    const char* name;
    const char* bare;
    double bound;
    const char* scene;   ///< MEL that deforms `sheet`
    const char* flags;   ///< of the tool
    const char* weights; ///< array of numbers, one per vertex
};

const char* const kShapes = "duplicate -n goal sheet; setAttr goal.translateX 20;"
                            "move -r 0 2 0 goal.vtx[*]; blendShape -n shapes goal sheet;"
                            "setAttr shapes.weight[0] 1;";
const char* const kMap = "maskedOffset -n shift -o 0 3 0 sheet;";
// Twisted joints, so that dual quaternions and linear skinning move the points to different places.
const char* const kTwistedSkin = "select -cl; joint -n hip -p -5 0 0; joint -n knee -p -2 0 0;"
                                 "joint -n ankle -p 1 0 0; joint -n toe -p 4 0 0;"
                                 "skinCluster -tsb -mi 4 -dr 4 -n skin hip knee ankle toe sheet;"
                                 "setAttr skin.skinningMethod 2; setAttr knee.rotateX 100;"
                                 "setAttr toe.rotateX -60;";

const Mode kModes[] = {
    {"default", "clamp", 3.0, kMap, "-deformer shift -weightMode default", "shift.weightList[0].weights"},
    {"dualQuaternion", "clamp", 3.0, kTwistedSkin, "-deformer skin -weightMode dualQuaternion",
     "skin.blendWeights"},
    {"plug", "store", 25.0, kMap, "-deformer shift -plug mask -weightMode plug", "shift.maskList[0].mask"},
    {"blendShapeTarget", "store", 25.0, kShapes, "-deformer shapes -target goal -weightMode blendShapeTarget",
     "shapes.inputTarget[0].inputTargetGroup[0].targetWeights"},
    {"blendShapeBase", "store", 25.0, kShapes, "-deformer shapes -weightMode blendShapeBase",
     "shapes.inputTarget[0].baseWeights"},
};

/// Weights over the whole range, so that the clamps have work.
std::vector<double> randomWeights(std::size_t count)
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> weight(0.0, 1.0);
    std::vector<double> weights(count);
    std::generate(weights.begin(), weights.end(), [&] { return weight(random); });
    return weights;
}

Scene sceneOf(const Mode& mode, std::size_t count)
{
    const std::string weights = mode.weights;
    const auto fill = [weights, count](host::Session& session, std::size_t pressed) {
        std::vector<double> values = randomWeights(count);
        values[pressed] = 0.5;
        const host::Plug plug = session.graph().plug(weights);
        host::NumericArray& numbers = plug.makeNumbers();
        for (std::size_t vertex = 0; vertex < count; ++vertex)
            numbers.set(static_cast<std::uint32_t>(vertex), values[vertex]);
        plug.changed();
    };
    return {mode.name, mode.scene, mode.flags, fill, weights, ""};
}

template <class Plain>
void compare(Contest& contest, const Mode& mode, std::size_t columns, std::size_t lines, Plain plain)
{
    Stroke stroke(sceneOf(mode, columns * lines), columns, lines);
    contest.run([&] { stroke.drag(); }, [&] { plain.run(); });
    stroke.requireMoves();
}

} // namespace

void addStrokes(Ratios& ratios, std::size_t columns, std::size_t lines)
{
    const std::size_t count = columns * lines;
    for (const Mode& mode : kModes) {
        const std::string bare = mode.bare;
        const Subject subject{std::string("drag ") + mode.name + " / " + bare, count,
                              boundAt(count, mode.bound), count > 100000 ? 15 : 61};
        ratios.add(subject, [&mode, bare, columns, lines, count](Contest& contest) {
            if (bare == "store")
                compare(contest, mode, columns, lines, PlainStore(randomWeights(count)));
            else if (std::string(mode.name) == "dualQuaternion")
                compare(contest, mode, columns, lines, PlainClamp<double>(randomWeights(count)));
            else
                compare(contest, mode, columns, lines, PlainClamp<float>(randomWeights(count)));
        });
    }
}

} // namespace bench
