#pragma once

#include "graph/graph.h"
#include "support/toolFixture.h"

#include <map>
#include <ostream>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace testing_support {

using Numbers = std::vector<double>;
/// Every weight of the scene, by the name of its array ("weights 1": the default map of mesh 1).
using State = std::map<std::string, Numbers>;
/// Numbers to put into a state: array -> index -> number.
using Change = std::map<std::string, std::map<std::size_t, double>>;

constexpr int kMeshes = 3;  ///< sheet, its twin with the same points, and coarse
constexpr int kClicked = 1; ///< the vertex of the sheet on which strokes begin

/// One weight mode, and where it keeps what it edits.
struct ModeRow {
    enum Kind {
        kPlain,         ///< one number per point
        kSkin,          ///< a row of all influences per point
        kLayer,         ///< one number per point of a layer, held to 0..1
        kLayerInfluence ///< the same for each influence
    };
    const char* mode;
    const char* flags;  ///< what the tool must be told beside the mode
    const char* edited; ///< as undo entries name it
    Kind kind;
    bool storesFloats;
    bool firstGeometryOnly; ///< whichever mesh is edited, the first geometry's weights are
    const char* array;      ///< name of the array in a state, without the mesh
    const char* plug; ///< where the scene keeps it, MESH and PLACE standing for the mesh's name and number

    bool isLayer() const { return kind == kLayer || kind == kLayerInfluence; }
    /// The array of the edited number of a mesh.
    std::string arrayOf(int mesh) const;
    std::string plugOf(int mesh) const;
};

std::ostream& operator<<(std::ostream& out, const ModeRow& row);
const std::vector<ModeRow>& modeRows();
const ModeRow& rowOf(const std::string& mode);

/// The edited points of a mesh, in component order, and their falloffs.
struct Piece {
    int mesh;
    std::vector<int> vertices;
    std::vector<double> falloff;
};
using Pieces = std::vector<Piece>;

struct Clamps {
    bool min = false, max = false;
    int low = 0; ///< the tool takes nothing but 0 and 1
    double high = 1;
};

struct StrokeRecord {
    const ModeRow* row;
    Pieces pieces;
    double offset;
    Clamps clamps;
    bool distribute = true;
};

/// Three meshes in a group under one blend shape, one deformer with two weight maps and a skin each; in the
/// layer modes each has layers too. What differs between the meshes (the order of the influences, the
/// layer's id) differs on purpose, and outside the layer modes the influences' indices have a gap.
class HistoryScene : public ToolTest {
public:
    void build(const ModeRow& mode);
    /// Bends and lifts everything, so that every weight moves its point. Without it all meshes are at rest.
    void pose();
    /// Chooses a mode. Layers must have been built for theirs.
    void choose(const ModeRow& mode);

    State state();
    /// The chosen mode's numbers of a mesh, as its array in a state.
    Numbers edited(int mesh);
    /// Writes every weight directly: the undo queue notices nothing.
    void setState(const State& state);
    /// Random weights: rows of a skin sum to one, layer weights stay in 0..1.
    State randomState(unsigned seed);
    /// Runs MEL that the undo queue does not notice.
    void unrecorded(const std::string& text);

    void select(const std::string& names) { mel("select " + names); }
    Pieces pieces();
    /// The same, but for the vertex that strokes click: its weights are in the middle.
    State clickableState(unsigned seed);
    /// Switches the tool on and presses beside everything, at which it notices that there are layers.
    void startTool();
    /// How far to drag to raise the clicked vertex's weight by about this much.
    Pixel dragFor(double more);
    void strokeBy(Pixel motion);
    void setClamps(const Clamps& clamps);

    std::string shape(int mesh) const { return "|all|" + meshName(mesh) + "|" + meshName(mesh) + "Shape"; }
    std::string vertexName(int mesh, int vertex) const
    {
        return meshName(mesh) + ".vtx[" + std::to_string(vertex) + "]";
    }
    static const std::string& meshName(int mesh);
    static int size(int mesh) { return mesh == 2 ? 9 : 20; }
    /// Physical index of the edited influence.
    static std::size_t knee(int mesh);

    /// The points of a mesh before it is deformed, in its own space.
    std::vector<Numbers> restPoints[kMeshes];

    std::string beforeDeformers; ///< MEL that build runs on the bare meshes

protected:
    void buildMeshes();
    void buildBlendShape();
    void bind(bool withGap);
    void attachLayers();
    std::string layerCall(int mesh, const std::string& target) const;
    Numbers painted(int mesh, const std::string& target);
    void paint(int mesh, const std::string& target, const Numbers& weights);
    void writeArray(const std::string& plug, const Numbers& numbers);
    Numbers readArray(const std::string& plug, std::size_t count);
    Numbers readSkin(int mesh);

    bool hasLayers = false;
    int layerIds[kMeshes] = {};
    std::vector<unsigned> logical[kMeshes]; ///< by physical index
    const ModeRow* chosen = nullptr;
};

// What the modes' rows say, worked out on plain numbers.

/// What redoing a stroke writes over the current state; `old` is the state at the press.
Change redoneStroke(const StrokeRecord& stroke, const State& old, const State& current);
Change undoneStroke(const StrokeRecord& stroke, const State& old);
Change undonePaste(const ModeRow& row, const Pieces& target, const State& old);
State changed(State state, const Change& change);
/// Fails for every number that is further away than the precision of what its mode stores.
void expectState(const State& actual, const State& expected, const std::string& what);

} // namespace testing_support
