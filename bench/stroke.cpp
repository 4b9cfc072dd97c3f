#include "stroke.h"

#include "graph/graph.h"
#include "mel/interpreter.h"
#include "ratios.h"
#include "tools/tools.h"

#include <cmath>

namespace bench {

Stroke::Stroke(const Scene& scene, std::size_t columns, std::size_t lines)
    : name(scene.name), change(scene.change), further(scene.further)
{
    const std::size_t middle = columns * 2 / 5 + lines / 4 * columns;
    const std::string vertex = "[" + std::to_string(middle) + "]";
    mel("loadPlugin \"" BUILD_DIR "/lib/morvane.so\"");
    mel("polyPlane -n sheet -w 10 -h 5 -ch 0 -sx " + std::to_string(columns - 1) + " -sy " +
        std::to_string(lines - 1) + "; setAttr persp.rotate -type double3 -55 12 0; viewFit sheet;");
    mel(scene.deformer);
    probe = scene.weights + vertex + scene.column;
    scene.fill(session, middle);
    mel("viewFit sheet; select -cl");
    mel("morvaneContext -e " + scene.flags + " morvaneContext1");
    mel("morvaneContext -e -clampMin true -clampMax true -displayWeights false morvaneContext1;"
        "setToolTo morvaneContext1");
    mel("select -r sheet.vtx[0:" + std::to_string(columns * lines - 1) + "]");
    const std::vector<int> at =
        session.mel().execute("viewportProject \"sheet.vtx" + vertex + "\"").toIntArray();
    require(at.size() == 2, name + ": the pressed vertex is not in view.");
    x = at[0];
    y = at[1];
    press();
    aim();
    requireMoves();
}

Stroke::~Stroke()
{
    if (isDown)
        release();
}

void Stroke::mel(const std::string& text)
{
    session.mel().execute(text);
}

void Stroke::press()
{
    session.tools().press(x, y, 1, {});
    isDown = true;
}

void Stroke::drag()
{
    session.tools().drag(x, y + (far ? static_cast<int>(reach * further) : reach));
    far = !far;
}

void Stroke::release()
{
    session.tools().release(x, y);
    isDown = false;
}

double Stroke::weight()
{
    return session.graph().plug(probe).number();
}

double Stroke::dragged()
{
    drag();
    return weight();
}

void Stroke::requireMoves()
{
    const double first = dragged(), second = dragged();
    require(first != second, name + ": the drag does not change the weights.");
    require(std::abs(dragged() - first) < 1e-12 && std::abs(dragged() - second) < 1e-12,
            name + ": a drag depends on the one before it.");
}

/// How far a drag goes for some weight depends on the scene; all strokes shall change weights as much.
void Stroke::aim()
{
    constexpr int kTrial = 10;
    const double before = weight();
    session.tools().drag(x, y + kTrial);
    const double perPixel = (weight() - before) / kTrial;
    require(perPixel != 0.0, name + ": the drag does not change the weights.");
    reach = static_cast<int>(std::lround(change / perPixel));
    if (reach == 0)
        reach = perPixel > 0.0 ? 1 : -1;
}

} // namespace bench
