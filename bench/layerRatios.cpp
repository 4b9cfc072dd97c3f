// Drag events on layers of a mesh next to what formatting and parsing as many numbers costs alone. An event
// holds all that happens until the skin has its new weights: the tool, the command's way through the host,
// and the stand-in's layers. Without labels; nothing pulls the mesh.
#include "mel/interpreter.h"
#include "ratios.h"
#include "session.h"
#include "tools/tools.h"

#include <maya/MString.h>

#include <charconv>
#include <cmath>
#include <numeric>

namespace bench {

namespace {

using Weights = std::vector<double>;

struct Drag {
    const char* name;
    const char* mode;
    const char* target;     ///< of the edited weights
    bool wholeMesh;         ///< every vertex is edited, else only the pressed one
    std::size_t arrays = 1; ///< written by one event
    double bound = 0.0;
};

const Drag kDrags[] = {
    {"mask of one vertex", "ngSkinToolsMask", "mask", false, 1, 1.5},
    {"mask", "ngSkinToolsMask", "mask", true, 1, 1.5},
    // The other influence's weights stay; they are written all the same.
    {"influence", "ngSkinToolsInfluence", "1", true, 2, 0.0},
};

/// Numbers with all their digits between a tenth of `most` and nine tenths; smooth, so that no vertex of a
/// sheet that they deform hides another.
Weights waves(std::size_t columns, std::size_t lines, double most)
{
    Weights weights;
    weights.reserve(columns * lines);
    for (std::size_t line = 0; line < lines; ++line)
        for (std::size_t column = 0; column < columns; ++column) {
            const double x = static_cast<double>(column) / static_cast<double>(columns);
            const double y = static_cast<double>(line) / static_cast<double>(lines);
            weights.push_back(most * (0.5 + 0.4 * std::sin(6.0 * x) * std::cos(4.0 * y)));
        }
    return weights;
}

/// The host's own texts of numbers, with commas between them.
std::string formatted(const Weights& values)
{
    std::string text;
    text.reserve(values.size() * 20);
    MString number;
    for (const double value : values) {
        number.clear();
        number += value;
        text.append(number.asChar(), number.length());
        text += ',';
    }
    text.pop_back();
    return text;
}

Weights parsed(const std::string& text, std::size_t count)
{
    Weights values;
    values.reserve(count);
    const char* const last = text.data() + text.size();
    for (const char* next = text.data(); next < last;) {
        double value = 0.0;
        next = std::from_chars(next, last, value).ptr + 1;
        values.push_back(value);
    }
    return values;
}

/// A press on a vertex of a sheet with one layer; each drag goes to the other of two places.
class LayerStroke {
public:
    LayerStroke(const Drag& drag, std::size_t columns, std::size_t lines) : target(drag.target)
    {
        const std::size_t count = columns * lines;
        const std::size_t middle = columns / 2 + lines / 2 * columns;
        const std::string vertex = "sheet.vtx[" + std::to_string(middle) + "]";
        makeScene(columns, lines);
        // The influences never share out: their sum stays below one.
        paint("0", Weights(count, 0.25));
        paint("1", waves(columns, lines, 0.75));
        paint("mask", waves(columns, lines, 1.0));
        mel(std::string("morvaneContext -e -weightMode ") + drag.mode + " morvaneContext1");
        mel("setToolTo morvaneContext1; select -r " +
            (drag.wholeMesh ? "sheet.vtx[0:" + std::to_string(count - 1) + "]" : vertex));
        const std::vector<int> at = session.mel().execute("viewportProject \"" + vertex + "\"").toIntArray();
        require(at.size() == 2, "The pressed vertex is not in view.");
        x = at[0];
        y = at[1];
        session.tools().press(x, y, 1, {});
        requireMoves();
    }
    ~LayerStroke() { session.tools().release(x, y); }
    LayerStroke(const LayerStroke&) = delete;
    LayerStroke& operator=(const LayerStroke&) = delete;

    void drag()
    {
        session.tools().drag(x, y + (up ? 1 : 2));
        up = !up;
    }
    /// Both places of the drag give their own weight, again and again.
    void requireMoves()
    {
        const double first = dragged(), second = dragged();
        require(first != second, "The drag does not change the layer.");
        require(dragged() == first && dragged() == second, "A drag depends on the one before it.");
    }

private:
    void mel(const std::string& text) { session.mel().execute(text); }
    void makeScene(std::size_t columns, std::size_t lines)
    {
        mel("polyPlane -n sheet -w 10 -h 5 -ch 0 -sx " + std::to_string(columns - 1) + " -sy " +
            std::to_string(lines - 1));
        mel("select -cl; joint -n hip -p -5 0 0; joint -n knee -p 0 0 0;"
            "skinCluster -tsb -mi 2 -dr 4 -n skin hip knee sheet; setAttr knee.translateY 2;"
            "setAttr persp.rotate -type double3 -55 12 0; viewFit sheet;"
            "loadPlugin \"" BUILD_DIR "/lib/morvane.so\"; loadPlugin \"" BUILD_DIR "/lib/layerStandIn.so\";"
            "ngst2Layers -e -attach |sheet|sheetShape;"
            "ngst2Layers -e -addLayer skinLayer |sheet|sheetShape;"
            "morvaneContext -e -deformer skin -ngLayer skinLayer -influence knee -displayWeights false"
            " -ngDistributeWeights false morvaneContext1");
    }
    void paint(const std::string& painted, const Weights& weights)
    {
        mel("ngst2Layers -e -id 1 -paintTarget " + painted + " -vertexWeights \"" + formatted(weights) +
            "\" |sheet|sheetShape");
    }
    /// The sum of the edited weights: on a dense mesh the press may take a neighbour of the vertex aimed at.
    double dragged()
    {
        drag();
        const Weights weights =
            session.mel()
                .execute("ngst2Layers -q -id 1 -paintTarget " + target + " -vertexWeights |sheet|sheetShape")
                .toFloatArray();
        return std::accumulate(weights.begin(), weights.end(), 0.0);
    }

    host::Session session;
    std::string target;
    int x = 0, y = 0;
    bool up = false;
};

void compare(Contest& contest, const Drag& drag, std::size_t columns, std::size_t lines)
{
    const std::size_t count = columns * lines;
    LayerStroke stroke(drag, columns, lines);
    const Weights weights = waves(columns, lines, 1.0);
    Weights back;
    contest.run([&] { stroke.drag(); },
                [&] {
                    for (std::size_t array = 0; array < drag.arrays; ++array)
                        back = parsed(formatted(weights), count);
                });
    stroke.requireMoves();
    require(back == weights, "Numbers do not read back as they were.");
}

} // namespace

void addLayers(Ratios& ratios, std::size_t columns, std::size_t lines)
{
    const std::size_t count = columns * lines;
    for (const Drag& drag : kDrags) {
        const Subject subject{std::string("layer ") + drag.name + " / numbers", count,
                              boundAt(count, drag.bound), count > 100000 ? 7 : 31};
        ratios.add(subject,
                   [&drag, columns, lines](Contest& contest) { compare(contest, drag, columns, lines); });
    }
}

} // namespace bench
