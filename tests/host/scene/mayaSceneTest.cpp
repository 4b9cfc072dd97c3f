#include "host/scene/sceneFacts.h"
#include "host/scene/sceneFixture.h"

#include "graph/graph.h"
#include "nodes/geometry.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace {

using nlohmann::json;
using testing_support::SceneFacts;
using testing_support::SceneTest;

/// The scenes that Maya itself has written, with what an independent reader says about them.
class MayaScene : public SceneTest, public ::testing::WithParamInterface<const char*> {
public:
    void SetUp() override
    {
        original = testing_support::mayaScenesDir() + "/" + GetParam() + ".ma";
        std::ifstream input(testing_support::mayaScenesDir() + "/expected/" + GetParam() + ".json");
        expected = json::parse(input);
        openFile(original);
    }

    host::Node& node(const json& name) { return session.graph().get(name.get<std::string>()); }

    void expectMatrix(const Imath::M44d& got, const json& wanted, const std::string& what)
    {
        for (int k = 0; k < 16; ++k)
            EXPECT_NEAR(got.getValue()[k], wanted[static_cast<std::size_t>(k)].get<double>(), 1e-5)
                << what << " cell " << k;
    }

    /// Reports only the worst point.
    void expectPoints(const json& shape, const json& wanted, const Imath::M44d& space,
                      const std::string& what)
    {
        const host::GeometryRef geometry = host::shapeGeometry(node(shape));
        ASSERT_TRUE(geometry) << what;
        double worst = 0.0;
        std::string where;
        for (const auto& [index, point] : wanted.items()) {
            ASSERT_LT(std::stoul(index), geometry->count()) << what;
            const Imath::V3d got = geometry->points()[std::stoul(index)] * space;
            const double off =
                (got - Imath::V3d(point[0].get<double>(), point[1].get<double>(), point[2].get<double>()))
                    .length();
            if (off > worst) {
                worst = off;
                where = index;
            }
        }
        EXPECT_LT(worst, 1e-5) << what << " point " << where;
    }

    std::string original;
    json expected;
};

TEST_P(MayaScene, StandsAsTheFileSays)
{
    for (const json& transform : expected["transforms"])
        expectMatrix(host::worldMatrix(*node(transform["path"]).asDag()), transform["world_matrix"],
                     transform["path"]);
    EXPECT_EQ(session.graph().connections().size(), expected["connections"].get<std::size_t>());
    for (const auto& [type, count] : expected["node_types"].items()) {
        if (type == "default")
            continue;
        // Every scene has a light set and an object set that files do not make.
        const std::size_t own = type == "objectSet" ? 2 : 0;
        EXPECT_EQ(melStrings("ls -exactType " + type).size() - own, count.get<std::size_t>()) << type;
    }
}

TEST_P(MayaScene, SkinsHaveTheirWeightsAndDeform)
{
    for (const json& skin : expected["skins"]) {
        const std::string name = skin["name"];
        for (const auto& [row, columns] : skin["weights"].items()) {
            for (const auto& [column, weight] : columns.items())
                EXPECT_NEAR(
                    session.graph().plug(name + ".weightList[" + row + "].weights[" + column + "]").number(),
                    weight.get<double>(), 1e-6)
                    << name << " row " << row << " column " << column;
        }
        for (const json& influence : skin["influences"]) {
            const std::string logical = std::to_string(influence["logical"].get<int>());
            expectMatrix(session.graph().plug(name + ".bindPreMatrix[" + logical + "]").matrix(),
                         influence["bind_pre_matrix"], name + " bind matrix " + logical);
            EXPECT_EQ(melStrings("listConnections -s 1 -d 0 " + name + ".matrix[" + logical + "]").at(0),
                      influence["name"].get<std::string>());
        }
        const Imath::M44d world = host::worldMatrix(*node(skin["shape"]).asDag());
        expectPoints(skin["source_shape"], skin["input_points"], {}, name + " input");
        expectPoints(skin["shape"], skin["object_points"], {}, name + " as opened");
        expectPoints(skin["shape"], skin["world_points"], world, name + " in the world");
    }
}

TEST_P(MayaScene, PosedSkinsDeformAsComputedElsewhere)
{
    for (const json& skin : expected["skins"]) {
        for (const auto& [pose, facts] : skin["posed"].items()) {
            openFile(original);
            for (const auto& [path, channels] : facts["edits"].items()) {
                for (const auto& [channel, values] : channels.items())
                    mel("setAttr \"" + path + "." + channel + "\" " + values[0].dump() + " " +
                        values[1].dump() + " " + values[2].dump());
            }
            const std::string what = skin["name"].get<std::string>() + " " + pose;
            expectPoints(skin["shape"], facts["linear"], {}, what);
            if (!facts.contains("dual"))
                continue;
            const std::string node = skin["name"];
            mel("setAttr " + node + ".skinningMethod 1");
            expectPoints(skin["shape"], facts["dual"], {}, what + " dual");
            mel("setAttr " + node + ".skinningMethod 2; for ($i = 0; $i < " + skin["point_count"].dump() +
                "; $i++) setAttr (\"" + node + ".blendWeights[\" + $i + \"]\") 0.5");
            expectPoints(skin["shape"], facts["half"], {}, what + " half");
        }
    }
}

TEST_P(MayaScene, BlendShapesMoveTheirPoints)
{
    for (const json& blend : expected["blend_shapes"]) {
        const std::string name = blend["name"];
        for (const auto& [index, weight] : blend["weights"].items())
            EXPECT_EQ(melFloat("getAttr " + name + ".weight[" + index + "]"), weight.get<double>());
        for (const json& alias : blend["aliases"])
            EXPECT_EQ(melString("aliasAttr -q " + name + "." + alias[1].get<std::string>()),
                      alias[0].get<std::string>());
        for (const json& geometry : blend["geometries"])
            expectPoints(geometry["shape"], geometry["output_points"], {}, name);
    }
}

TEST_P(MayaScene, LosesNothingWhenItIsSavedAndOpenedAgain)
{
    const std::string once = save("once.ma");
    const SceneFacts before = testing_support::readFacts(original);
    const SceneFacts after = testing_support::readFacts(path("once.ma"));
    for (const auto& [attribute, words] : before.values) {
        const auto found = after.values.find(attribute);
        ASSERT_NE(found, after.values.end()) << attribute;
        EXPECT_TRUE(testing_support::sameWords(words, found->second)) << attribute;
    }
    const auto lost = [](const auto& all, const auto& left, const char* what) {
        for (const std::string& entry : all)
            EXPECT_GE(left.count(entry), all.count(entry)) << what << ": " << entry;
    };
    lost(before.flags, after.flags, "flag");
    lost(before.nodes, after.nodes, "node");
    lost(before.attributes, after.attributes, "attribute");
    // An array's next element may stand there with its number.
    std::multiset<std::string> connections = after.connections;
    for (const std::string& connection : before.connections) {
        auto found = connections.find(connection);
        if (found == connections.end() && connection.back() == ']')
            found = connections.lower_bound(connection.substr(0, connection.size() - 1));
        ASSERT_NE(found, connections.end()) << connection;
        EXPECT_EQ(found->compare(0, connection.size() - 1, connection, 0, connection.size() - 1), 0)
            << connection;
        connections.erase(found);
    }
    lost(before.others, after.others, "statement");
    EXPECT_EQ(after.connections.size(), before.connections.size());

    openFile(path("once.ma"));
    EXPECT_TRUE(save("twice.ma") == once);
}

INSTANTIATE_TEST_SUITE_P(Shared, MayaScene,
                         ::testing::Values("gt_plane_skinned", "gltf_CubeTwoTargets", "omtk_test_tongue"),
                         [](const auto& scene) { return std::string(scene.param); });

} // namespace
