#pragma once

#include "nodes/geometry.h"
#include "support/toolFixture.h"

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace testing_support {

/// One weight mode as the tests know it: where its weights of a mesh live and what their arithmetic is.
struct WeightPlace {
    /// How the clicked vertex's weight is nudged to see where it moves.
    enum Probe {
        kAround, ///< w - s, w + s, then w again
        kSteps   ///< w - s, plus 0.01, minus s: each step from the value as it was stored
    };
    const char* mode;
    const char* array;  ///< plug of the mesh's numbers, one per vertex; empty for skin rows and layers
    const char* target; ///< paint target of a layer; empty otherwise
    bool single;        ///< the weights are stored in single precision
    bool unitClamp;     ///< a live stroke holds them to 0..1 whatever the clamp settings
    Probe probe;

    bool isLayer() const { return *target != 0; }
    bool isSkin() const { return *array == 0 && !isLayer(); }
    std::string name() const { return mode; }
};

inline void PrintTo(const WeightPlace& place, std::ostream* out)
{
    *out << place.mode;
}

/// All nine, with the places of "sheet".
extern const std::vector<WeightPlace> kWeightPlaces;
const WeightPlace& weightPlace(const std::string& mode);

/// Two meshes of 5 x 3 points, "sheet" and "twin", under a transform that turns and scales them about a
/// vertex. Each is deformed by the blend shape "face" (sheet first, twin second), the
/// two-map deformer "lift" (twin first, sheet second) and a skin of its own, posed so that every weight moves
/// its point. The edited influence is "knee", the edited blend shape target "smile" (index 4).
/// In the layer modes the skins carry the layer "paintLayer" (id 1); in the others the influences' logical
/// indices start at 1, so that they are not their positions.
class ModeScene : public ToolTest {
public:
    static constexpr int kVertices = 5 * 3;
    static constexpr int kMiddle = 7;
    static constexpr double kStep = 0.005; ///< by which a probe nudges

    const std::vector<std::string> meshes = {"sheet", "twin"};

    /// Builds the scene, switches the tool on in that mode and selects the middle. Nothing can be undone yet.
    void build(const WeightPlace& place);

    /// The numbers that the mode edits, by vertex. Written around the undo queue.
    std::vector<double> weights(const std::string& mesh = "sheet");
    void setWeights(const std::vector<double>& values, const std::string& mesh = "sheet");
    void setWeight(int vertex, double value, const std::string& mesh = "sheet");
    /// Rows of all influences, in logical order.
    std::vector<std::vector<double>> rows(const std::string& mesh = "sheet");
    void setRows(const std::vector<std::vector<double>>& values, const std::string& mesh = "sheet");
    /// All that an edit in the mode may change, to be put back around the undo queue.
    struct State {
        std::map<std::string, std::vector<double>> numbers;
        std::map<std::string, std::vector<std::vector<double>>> rows;
        std::map<std::string, std::map<std::string, std::vector<double>>> layers; ///< mesh, paint target
    };
    State state();
    void restore(const State& state);
    /// A number as the mode stores it.
    double stored(double number) const;

    /// Looks at a vertex from so far away, and turns and scales the meshes about it, so that its place is the
    /// same in its own space and in the world.
    void lookAt(int vertex, double distance);
    /// A point's object-space position.
    Imath::V3d point(int vertex, const std::string& mesh = "sheet");
    Imath::V2d pixel(const Imath::V3d& world);
    /// To the right on screen, in the world.
    Imath::V3d screenRight();
    /// Pixels per unit of weight, from the scene alone: writes what a probe of the mode writes, looks where
    /// the vertex goes, and puts everything back.
    Imath::V2d direction(int vertex, const std::string& mesh = "sheet");
    /// What a drag adds to a weight of falloff 1.
    static double offsetOf(const Imath::V2d& direction, int dx, int dy);
    /// Whole pixels to drag for about this offset, not quite along the direction.
    static Pixel dragFor(const Imath::V2d& direction, double offset);

    Pixel at(int vertex, const std::string& mesh = "sheet");
    std::string path(const std::string& mesh) const { return "|pair|" + mesh + "|" + mesh + "Shape"; }
    /// The plug of a mesh's numbers.
    std::string arrayOf(const std::string& mesh) const;

    WeightPlace place = {};

private:
    void buildMeshes();
    void buildSkins();
    void attachLayers();
    void fillWeights();
    void paint(const std::string& mesh, const std::string& target, const std::vector<double>& values);
    std::size_t column() const { return place.isLayer() ? 1 : 2; } ///< the knee's logical index
};

/// The lines of a trace that start with this word.
std::vector<std::string> linesOf(const std::vector<std::string>& trace, const std::string& word);

} // namespace testing_support
