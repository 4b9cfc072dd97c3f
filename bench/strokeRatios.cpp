// Drag events through the loaded plug-in, all points selected, without labels; nothing pulls the mesh.
#include "graph/graph.h"
#include "graph/node.h"
#include "graph/numericArray.h"
#include "mel/interpreter.h"
#include "ratios.h"
#include "session.h"
#include "tools/tools.h"

#include <numeric>
#include <random>

namespace bench {

namespace {

struct Mode {
    const char* name;
    const char* scene;   ///< MEL that deforms `sheet`
    const char* flags;   ///< of the tool
    const char* weights; ///< array of numbers, one per vertex
};

const char* const kShapes = "duplicate -n goal sheet; setAttr goal.translateX 20;"
                            "move -r 0 2 0 goal.vtx[*]; blendShape -n shapes goal sheet;"
                            "setAttr shapes.weight[0] 1;";
const char* const kMap = "maskedOffset -n shift -o 0 3 0 sheet;";

const Mode kModes[] = {
    {"default", kMap, "-deformer shift -weightMode default", "shift.weightList[0].weights"},
    {"plug", kMap, "-deformer shift -plug mask -weightMode plug", "shift.maskList[0].mask"},
    {"blendShapeTarget", kShapes, "-deformer shapes -target goal -weightMode blendShapeTarget",
     "shapes.inputTarget[0].inputTargetGroup[0].targetWeights"},
    {"blendShapeBase", kShapes, "-deformer shapes -weightMode blendShapeBase",
     "shapes.inputTarget[0].baseWeights"},
};

/// A press on a vertex with all selected; each drag goes to the other of two places.
class Stroke {
public:
    Stroke(const Mode& mode, std::size_t columns, std::size_t lines) : count(columns * lines)
    {
        mel("loadPlugin \"" BUILD_DIR "/lib/morvane.so\"");
        mel("polyPlane -n sheet -w 10 -h 5 -ch 0 -sx " + std::to_string(columns - 1) + " -sy " +
            std::to_string(lines - 1) + "; setAttr persp.rotate -type double3 -55 12 0; viewFit sheet;");
        mel(mode.scene);
        fill(session.graph().plug(mode.weights));
        mel("viewFit sheet; select -cl");
        mel(std::string("morvaneContext -e ") + mode.flags + " morvaneContext1");
        mel("morvaneContext -e -clampMin true -clampMax true -displayWeights false morvaneContext1;"
            "setToolTo morvaneContext1");
        mel("select -r sheet.vtx[0:" + std::to_string(count - 1) + "]");
        const std::string middle = std::to_string(columns * 2 / 5 + lines / 4 * columns);
        probe = std::string(mode.weights) + "[" + middle + "]";
        const std::vector<int> at =
            session.mel().execute("viewportProject \"sheet.vtx[" + middle + "]\"").toIntArray();
        require(at.size() == 2, std::string(mode.name) + ": the pressed vertex is not in view.");
        x = at[0];
        y = at[1];
        session.tools().press(x, y, 1, {});
        const double first = dragged(), second = dragged();
        require(first != second, std::string(mode.name) + ": the drag does not change the weights.");
    }
    ~Stroke() { session.tools().release(x, y); }
    Stroke(const Stroke&) = delete;
    Stroke& operator=(const Stroke&) = delete;

    void drag()
    {
        session.tools().drag(x + 2, y + (up ? 4 : 9));
        up = !up;
    }

private:
    void mel(const std::string& text) { session.mel().execute(text); }
    double dragged()
    {
        drag();
        return session.graph().plug(probe).number();
    }
    void fill(const host::Plug& weights)
    {
        std::mt19937 random(5);
        std::uniform_real_distribution<double> weight(0.3, 0.7);
        host::NumericArray& numbers = weights.makeNumbers();
        for (std::size_t vertex = 0; vertex < count; ++vertex)
            numbers.set(static_cast<std::uint32_t>(vertex), weight(random));
        weights.changed();
    }

    host::Session session;
    std::size_t count;
    std::string probe;
    int x = 0, y = 0;
    bool up = false;
};

template <class Weight>
struct PlainStroke {
    explicit PlainStroke(std::size_t count) : old(count), soft(count, 1.0f), result(count), ids(count)
    {
        std::mt19937 random(5);
        std::uniform_real_distribution<double> weight(0.3, 0.7);
        std::generate(old.begin(), old.end(), [&] { return static_cast<Weight>(weight(random)); });
        std::iota(ids.begin(), ids.end(), 0);
    }

    void clamp()
    {
        offset = -offset;
        for (std::size_t k = 0; k < old.size(); ++k)
            result[k] = static_cast<Weight>(clamped(k));
    }
    void indexedStore()
    {
        for (std::size_t k = 0; k < ids.size(); ++k)
            result[static_cast<std::size_t>(ids[k])] = old[k];
    }
    double clamped(std::size_t k) const
    {
        const double value = static_cast<double>(old[k]) + offset * static_cast<double>(soft[k]);
        return std::min(std::max(value, 0.0), 1.0);
    }

    std::vector<Weight> old;
    std::vector<float> soft;
    std::vector<Weight> result;
    std::vector<int> ids;
    double offset = 0.2;
};

} // namespace

void compareStrokes(Ratios& ratios, std::size_t columns, std::size_t lines)
{
    const std::size_t count = columns * lines;
    PlainStroke<float> floats(count);
    for (const Mode& mode : kModes) {
        Stroke stroke(mode, columns, lines);
        const std::string name = mode.name;
        const auto product = [&] { stroke.drag(); };
        const int rounds = count > 100000 ? 7 : 31;
        if (name == "default")
            ratios.compare({"drag default / clamp", count, boundAt(count, 3.0), rounds}, product,
                           [&] { floats.clamp(); });
        else
            ratios.compare({"drag " + name + " / store", count, boundAt(count, 25.0), rounds}, product,
                           [&] { floats.indexedStore(); });
    }
}

} // namespace bench
