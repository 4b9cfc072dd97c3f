#pragma once

#include "support/reachModel.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace testing_support {

using Values = std::vector<double>;
using Rows = std::vector<Values>;

/// An index as arrays take it.
inline std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

/// What single precision keeps of a number.
inline double narrowed(double number)
{
    return static_cast<double>(static_cast<float>(number));
}

enum class Mode { kDefault, kPlug, kSkin, kBlend, kTarget, kBase, kMask, kLayerBlend, kInfluence };

/// As the context command knows it.
const char* modeName(Mode mode);
/// Default maps, named maps, both blend shape modes: one number in single precision per point.
bool isFloatMode(Mode mode);
/// The numbers live in the skin of the edited object.
bool isSkinMode(Mode mode);
bool isLayerMode(Mode mode);

struct Settings {
    Mode mode = Mode::kDefault;
    bool clampMin = true, clampMax = false;
    double low = 0, high = 1;
    std::string deformer, target, layer;
    bool distribute = true;
    bool perVertex = false; ///< pastes give every point just what its match had
};

struct ModelLayer {
    int id;
    std::string name;
    int parent; ///< -1: on top
    double opacity;
};

/// What is known of a shape beforehand.
struct ModelShape {
    std::string name; ///< of the transform
    enum Kind { kMesh, kCurve, kSurface, kLattice } kind = kMesh;
    int size = 0;
    Points rest;                     ///< undeformed, in its own space
    int influences = 0;              ///< of its skin; 0: it has none
    std::vector<std::string> joints; ///< what they are called
    int influence = -1;              ///< the one that strokes edit; -1: it is not among them
    int hip = -1;                    ///< the one that does not move
    std::vector<ModelLayer> layers;  ///< lowest first; empty: none attached
    Rows baseRows;                   ///< skin weights below the layers
    Values baseBlend;
    Point place = {0, 0, 0}; ///< its translation
    Point scale = {1, 1, 1}; ///< of lattices; nothing else scales or turns a shape
    bool bent = false;       ///< by a deformer that the model does not know
};

struct ModelDeformer {
    std::string name;
    enum Kind { kWeighted, kMasked, kBlendShape, kSkin } kind = kWeighted;
    std::vector<int> geometries;             ///< shapes, by geometry index
    std::map<int, std::vector<int>> members; ///< points by shape, ascending
    std::vector<std::string> targets;        ///< of a blend shape
    Point offset = {0, 0, 0};                ///< how far weight 1 moves a point
    bool inWorld = false;                    ///< the offset is one in world space
    double falloffRadius = 0;                ///< about the world's origin; 0: no falloff
    std::vector<Point> targetOffsets;        ///< the same per target
    int geometryOf(int shape) const;         ///< -1: does not deform it
};

/// Where an array of numbers lives: the deformer's (or shape's) name, which of its maps, which geometry.
using MapKey = std::tuple<std::string, std::string, int>;

struct Weights {
    std::map<MapKey, Values> numbers;
    std::vector<Rows> skin;                             ///< per shape
    std::vector<std::map<std::string, Values>> painted; ///< per shape, by "layer id, blank, paint target"
};

/// What an edit found before it, per object.
struct OldWeights {
    Values numbers;                       ///< per point; the edited influence in the skin mode
    Rows rows;                            ///< per point: all influences
    std::map<std::string, Values> arrays; ///< layers: whole shape, by paint target
};

/// What a paste writes, per object.
struct PastedWeights {
    bool refused = false; ///< neither the paste nor its undo writes anything
    Values numbers;
    Values row; ///< the same for every point
    Rows rows;  ///< one for every point
    std::map<std::string, Values> arrays;
};

/// One point of a shape.
struct Spot {
    int shape = -1, point = -1;
};

/// A stroke or paste with everything that its redo and undo need.
struct EditModel {
    Settings settings;
    int deformer = -1;
    Pieces pieces;
    std::vector<OldWeights> old;
    double offset = 0;
    std::vector<PastedWeights> pasted;
};

struct CopyModel {
    Mode mode = Mode::kDefault;
    Pieces pieces;
    std::vector<OldWeights> weights;
    bool fromSkins = false; ///< the skins of the copied objects are known
};

/// For every point of a target: copied object, position in its points, vertex.
struct MatchModel {
    struct Match {
        std::size_t object, position;
        int vertex;
    };
    std::vector<Match> matches;
};

/// Shapes, deformers and every weight of a scene in plain arrays, and the arithmetic of all weight modes.
class WeightModel {
public:
    std::vector<ModelShape> shapes;
    std::vector<ModelDeformer> deformers;
    Weights weights;

    int deformerNamed(const std::string& name) const;
    /// The pieces of a selection that a mode edits, one per object and side.
    Pieces edited(const Settings& settings, int deformer, const RichPieces& rich) const;
    /// False when the mode cannot read there; `edit.old` is filled otherwise.
    bool read(EditModel& edit) const;
    /// What nudging the weight of the clicked point leaves behind. Returns whether that differs from before.
    bool probe(const EditModel& edit, const Spot& spot);
    void stroke(const EditModel& edit, bool live);
    /// Whether redoing it gives what the mouse left, to the last bit: the two clamp in different ways.
    bool redoesAlike(const EditModel& edit) const;
    void undoStroke(const EditModel& edit);
    /// Puts back everything that the edit found.
    void restore(const EditModel& edit);
    /// Fills `edit.pasted`. False when the paste is stopped before anything is written or recorded.
    bool preparePaste(EditModel& edit, const CopyModel& copy) const;
    void paste(const EditModel& edit);
    void undoPaste(const EditModel& edit);

    /// One row with an influence's weight changed: the others share what is left.
    static Values withRoom(Values row, std::size_t influence, double weight);
    /// Null where the mode keeps no numbers for the shape.
    Values* numbers(const EditModel& edit, int shape);
    /// The layer that the settings name, or -1.
    int layerId(const Settings& settings, int shape) const;
    static std::string paintTarget(const EditModel& edit, const ModelShape& shape);
    /// Lays the layers of a shape over what lies below them.
    void compose(int shape);

    /// Empty where the mode keeps no numbers for the shape.
    MapKey keyOf(const EditModel& edit, int shape) const;

private:
    bool isEdited(const Settings& settings, int shape) const;
    Piece members(const ModelDeformer& deformer, const Piece& piece) const;
    const Points* restOf(int deformer, bool skinKnown, int shape) const;
    bool match(const EditModel& edit, const CopyModel& copy, const Piece& target, MatchModel& found) const;
    PastedWeights pastedOn(const EditModel& edit, const CopyModel& copy, std::size_t place,
                           const MatchModel& match) const;
    PastedWeights pastedPerVertex(const EditModel& edit, const CopyModel& copy, std::size_t place,
                                  const MatchModel& match) const;
    bool carryOver(const Piece& from, const Values& source, int to, Values& row) const;
    void strokeLayer(const EditModel& edit, std::size_t place);
    void writeLayer(int shape, int id, const std::string& target, const Values& values);
    Values& paintedArray(int shape, int id, const std::string& target);
    const Values& paintedArray(int shape, int id, const std::string& target) const;
};

} // namespace testing_support
