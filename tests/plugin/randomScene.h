#pragma once

#include "graph/graph.h"
#include "nodes/geometry.h"
#include "selection/selectionState.h"
#include "support/toolFixture.h"
#include "support/toolModel.h"
#include "view/viewport.h"

#include <array>
#include <map>
#include <random>
#include <streambuf>
#include <utility>

/// A scene for random edits, the model of it, and what the platform decides about it, asked directly.
class RandomScene : public testing_support::ToolTest {
public:
    /// Shapes with deformers whose maps, skins and layers are all different.
    enum class Kind { kMeshes, kPoints, kBlendShapes, kLayers };
    static const char* nameOf(Kind kind);

    RandomScene();
    ~RandomScene() override;
    /// Builds the scene; the model starts with the same weights.
    void build(Kind kind);

    /// A mode with a deformer on which it works.
    struct Pairing {
        testing_support::Mode mode;
        std::string deformer;
    };
    std::vector<Pairing> pairings;
    std::vector<std::string> layerNames, targetNames;

    testing_support::Weights actual();
    testing_support::Selection actualSelection();
    testing_support::RichPieces actualRich();
    /// Every point of every shape as displayed, in its own space.
    std::vector<testing_support::Points> positions();
    /// What a click takes, what lies under the mouse while the highlight is on, and what a rectangle takes.
    testing_support::Selection pick(int x, int y);
    testing_support::Selection highlight(int x, int y);
    testing_support::Selection pick(const Imath::V2d& from, const Imath::V2d& to);
    /// The texts of components for scripts.
    std::string names(const testing_support::Selection& selection);

    using Spot = testing_support::Spot;
    Imath::V2d pixelOf(const Spot& spot);
    /// Where a rise of a point's weight by 1 leads on the screen; zero when nothing moves it. Writes the
    /// weight a little lower and higher, as the mode stores it, and puts it back.
    Imath::V2d direction(const testing_support::EditModel& edit, const Spot& spot);

    int below(int count) { return static_cast<int>(engine() % static_cast<unsigned>(count)); }
    double fraction() { return below(10001) / 10000.0; }

    std::mt19937 engine;
    testing_support::ToolModel model;

private:
    using Key = testing_support::MapKey;

    /// All digits of a number.
    static std::string exact(double number);

    void buildMeshes();
    void buildPoints();
    void buildBlendShapes();
    void buildLayers();
    void addShape(const std::string& name);
    void addDeformer(const std::string& name, testing_support::ModelDeformer::Kind kind,
                     const std::vector<std::string>& targets = {});
    void addJoints();
    void addSkin(const std::string& shape, const std::vector<std::string>& joints);
    void pose();
    void addLayers(int shape, const std::vector<testing_support::ModelLayer>& layers);
    void randomWeights();
    void addMap(const Key& key, const std::string& plug, int size);

    host::DagNode& shape(int index) { return *shapes[static_cast<std::size_t>(index)]; }
    int indexOf(const host::Node* node) const;
    testing_support::Selection selectionOf(const host::SelectionList& list);
    testing_support::Points pointsOf(int index, bool inWorld);
    Imath::V3d objectPoint(const Spot& spot);
    Imath::V2d pixel(const Imath::V3d& world);
    void setRow(const Spot& spot, const testing_support::Values& values);
    std::string shapePath(int shape);
    void paint(int shape, const std::string& key, const testing_support::Values& values);
    testing_support::Values painted(int shape, const std::string& key);
    /// Low and high position of a point whose weight is nudged; false when there is no such weight.
    bool nudge(const testing_support::EditModel& edit, const Spot& spot, Imath::V3d& low, Imath::V3d& high);
    bool nudgeLayer(const testing_support::EditModel& edit, const Spot& spot, Imath::V3d& low,
                    Imath::V3d& high);
    bool nudgeSkin(const Spot& spot, Imath::V3d& low, Imath::V3d& high);

    struct Map {
        host::Plug plug;
        int size;
    };
    std::vector<host::Ref<host::DagNode>> shapes;
    std::map<Key, Map> maps;
    std::vector<host::Plug> rows; ///< per shape; null without a skin

    struct Silence : std::streambuf {
        int overflow(int c) override { return c; }
    } silence;
    std::streambuf* errors;
};
