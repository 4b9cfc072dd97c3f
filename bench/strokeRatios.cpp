// Drag events through the loaded plug-in, all points selected, without labels; nothing pulls the mesh.
#include "graph/graph.h"
#include "graph/node.h"
#include "graph/numericArray.h"
#include "graph/weightRows.h"
#include "mel/interpreter.h"
#include "plainStroke.h"
#include "ratios.h"
#include "session.h"
#include "tools/tools.h"

#include <cmath>
#include <random>

namespace bench {

namespace {

constexpr std::size_t kInfluences = 4;
constexpr std::size_t kEdited = 1; ///< the influence "knee"

struct Mode {
    const char* name;
    const char* bare;
    double bound;
    const char* scene;   ///< MEL that deforms `sheet`
    const char* flags;   ///< of the tool
    const char* weights; ///< array of numbers, one per vertex; null = the rows of `skin`
};

const char* const kShapes = "duplicate -n goal sheet; setAttr goal.translateX 20;"
                            "move -r 0 2 0 goal.vtx[*]; blendShape -n shapes goal sheet;"
                            "setAttr shapes.weight[0] 1;";
const char* const kMap = "maskedOffset -n shift -o 0 3 0 sheet;";
const char* const kSkin = "select -cl; joint -n hip -p -5 0 0; joint -n knee -p -2 0 0;"
                          "joint -n ankle -p 1 0 0; joint -n toe -p 4 0 0;"
                          "skinCluster -tsb -mi 4 -dr 4 -n skin hip knee ankle toe sheet;"
                          "setAttr knee.translateY 8;";
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
    {"skinCluster", "rescale", 2.5, kSkin, "-deformer skin -influence knee -weightMode skinCluster", nullptr},
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

using Rows = std::vector<std::array<double, kInfluences>>;

/// Each row sums to 1, all influences in it.
Rows randomRows(std::size_t count)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> weight(0.05, 1.0);
    Rows rows(count);
    for (auto& row : rows) {
        double sum = 0.0;
        for (double& value : row)
            sum += value = weight(random);
        for (double& value : row)
            value /= sum;
    }
    return rows;
}

/// A press on a vertex with all selected; each drag goes to the other of two places.
class Stroke {
public:
    Stroke(const Mode& mode, std::size_t columns, std::size_t lines) : count(columns * lines)
    {
        const std::size_t middle = columns * 2 / 5 + lines / 4 * columns;
        const std::string vertex = "[" + std::to_string(middle) + "]";
        mel("loadPlugin \"" BUILD_DIR "/lib/morvane.so\"");
        mel("polyPlane -n sheet -w 10 -h 5 -ch 0 -sx " + std::to_string(columns - 1) + " -sy " +
            std::to_string(lines - 1) + "; setAttr persp.rotate -type double3 -55 12 0; viewFit sheet;");
        mel(mode.scene);
        probe = mode.weights ? mode.weights + vertex : "skin.weightList" + vertex + ".weights[1]";
        if (mode.weights)
            fill(session.graph().plug(mode.weights), middle);
        else
            fillRows(session.graph().plug("skin.weightList"), middle);
        mel("viewFit sheet; select -cl");
        mel(std::string("morvaneContext -e ") + mode.flags + " morvaneContext1");
        mel("morvaneContext -e -clampMin true -clampMax true -displayWeights false morvaneContext1;"
            "setToolTo morvaneContext1");
        mel("select -r sheet.vtx[0:" + std::to_string(count - 1) + "]");
        const std::vector<int> at =
            session.mel().execute("viewportProject \"sheet.vtx" + vertex + "\"").toIntArray();
        require(at.size() == 2, std::string(mode.name) + ": the pressed vertex is not in view.");
        x = at[0];
        y = at[1];
        session.tools().press(x, y, 1, {});
        aim(mode.name);
        requireMoves(mode.name);
    }
    ~Stroke() { session.tools().release(x, y); }
    Stroke(const Stroke&) = delete;
    Stroke& operator=(const Stroke&) = delete;

    void drag()
    {
        session.tools().drag(x, y + (far ? 2 * reach : reach));
        far = !far;
    }
    /// Both places of the drag give their own weight, again and again.
    void requireMoves(const std::string& name)
    {
        const double first = dragged(), second = dragged();
        require(first != second, name + ": the drag does not change the weights.");
        require(dragged() == first && dragged() == second, name + ": a drag depends on the one before it.");
    }

private:
    void mel(const std::string& text) { session.mel().execute(text); }
    double weight() { return session.graph().plug(probe).number(); }
    double dragged()
    {
        drag();
        return weight();
    }
    /// How far a drag goes for some weight depends on the scene; all strokes shall change weights as much.
    void aim(const std::string& name)
    {
        constexpr int kTrial = 10;
        constexpr double kChange = 0.06;
        const double before = weight();
        session.tools().drag(x, y + kTrial);
        const double perPixel = (weight() - before) / kTrial;
        require(perPixel != 0.0, name + ": the drag does not change the weights.");
        reach = static_cast<int>(std::lround(kChange / perPixel));
        if (reach == 0)
            reach = perPixel > 0.0 ? 1 : -1;
    }
    /// The pressed vertex lies in the middle of the range, so that it can move both ways.
    void fill(const host::Plug& plug, std::size_t pressed)
    {
        std::vector<double> weights = randomWeights(count);
        weights[pressed] = 0.5;
        host::NumericArray& numbers = plug.makeNumbers();
        for (std::size_t vertex = 0; vertex < count; ++vertex)
            numbers.set(static_cast<std::uint32_t>(vertex), weights[vertex]);
        plug.changed();
    }
    void fillRows(const host::Plug& plug, std::size_t pressed)
    {
        Rows weights = randomRows(count);
        weights[pressed] = {0.25, 0.25, 0.25, 0.25};
        host::WeightRows& rows = plug.makeRows();
        for (std::uint32_t vertex = 0; vertex < count; ++vertex)
            for (std::uint32_t influence = 0; influence < kInfluences; ++influence)
                rows.set(vertex, influence, weights[vertex][influence]);
        plug.changed();
    }

    host::Session session;
    std::size_t count;
    std::string probe;
    int x = 0, y = 0;
    int reach = 0; ///< of the nearer drag, in pixels
    bool far = false;
};

template <class Plain>
void compare(Contest& contest, const Mode& mode, std::size_t columns, std::size_t lines, Plain plain)
{
    Stroke stroke(mode, columns, lines);
    contest.run([&] { stroke.drag(); }, [&] { plain.run(); });
    stroke.requireMoves(mode.name);
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
            if (bare == "rescale")
                compare(contest, mode, columns, lines, PlainRows<kInfluences, kEdited>(randomRows(count)));
            else if (bare == "store")
                compare(contest, mode, columns, lines, PlainStore(randomWeights(count)));
            else if (std::string(mode.name) == "dualQuaternion")
                compare(contest, mode, columns, lines, PlainClamp<double>(randomWeights(count)));
            else
                compare(contest, mode, columns, lines, PlainClamp<float>(randomWeights(count)));
        });
    }
}

} // namespace bench
