#include "graphFixture.h"

#include "graph/names.h"

using namespace host;

namespace {

std::vector<std::string> namesOf(const std::vector<Node*>& nodes)
{
    std::vector<std::string> names;
    for (const Node* node : nodes)
        names.push_back(node->uniqueName());
    return names;
}

using Names = std::vector<std::string>;

} // namespace

TEST_F(GraphTest, NamesStayUniqueAmongSiblingsAndAgainstNodesOutsideTheHierarchy)
{
    EXPECT_EQ(make("adder").name(), "adder1");
    EXPECT_EQ(make("adder").name(), "adder2");
    EXPECT_EQ(make("adder", "body").name(), "body");
    EXPECT_EQ(make("adder", "body").name(), "body1");
    DagNode& arm = place("arm");
    EXPECT_EQ(place("body").name(), "body2");
    EXPECT_EQ(place("hand", &arm).name(), "hand");
    EXPECT_EQ(place("hand", &arm).name(), "hand1");
    EXPECT_EQ(place("hand").name(), "hand") << "another parent";
    EXPECT_EQ(make("adder", "1 b-c").name(), "_1_b_c");
    EXPECT_THROW(make("adder", ":"), Error);
}

TEST_F(GraphTest, NodesAreFoundByNamePathAndIdentifierAndAmbiguityIsAnError)
{
    DagNode& left = place("left");
    DagNode& right = place("right");
    DagNode& leftHand = place("hand", &left);
    place("hand", &right);
    EXPECT_EQ(leftHand.uniqueName(), "left|hand");
    EXPECT_EQ(leftHand.fullPath(), "|left|hand");
    EXPECT_EQ(graph.find("left|hand"), &leftHand);
    EXPECT_EQ(graph.find("|left|hand"), &leftHand);
    EXPECT_EQ(graph.find(leftHand.uuid()), &leftHand);
    EXPECT_EQ(graph.find(":left"), &left);
    EXPECT_EQ(graph.find("|hand"), nullptr);
    EXPECT_EQ(errorOf([&] { graph.find("hand"); }), "More than one object matches name: hand");
    EXPECT_EQ(errorOf([&] { graph.get("nobody"); }), "No object matches name: nobody");

    place("hand");
    EXPECT_EQ(graph.find("|hand")->uniqueName(), "|hand") << "no shorter name would find it alone";
    graph.rename(leftHand, "paw");
    EXPECT_EQ(leftHand.uniqueName(), "paw");
    EXPECT_EQ(graph.find("left|hand"), nullptr);
}

TEST_F(GraphTest, PatternsMatchPartByPartInCreationOrder)
{
    DagNode& root = place("root");
    place("arm1", &root);
    place("arm2", &root);
    make("adder", "rig:arm3");
    make("adder", "rig:left:arm4");
    EXPECT_EQ(namesOf(graph.match("arm*")), (Names{"arm1", "arm2"}));
    EXPECT_EQ(namesOf(graph.match("arm?", true)), (Names{"arm1", "arm2", "rig:arm3", "rig:left:arm4"}));
    EXPECT_EQ(namesOf(graph.match("rig:*")), (Names{"rig:arm3"}));
    EXPECT_EQ(namesOf(graph.match("*:*:*")), (Names{"rig:left:arm4"}));
    EXPECT_EQ(namesOf(graph.match("r*|*2")), (Names{"arm2"}));
    EXPECT_EQ(namesOf(graph.match("|arm*")), Names{});
    EXPECT_EQ(namesOf(graph.match("|*|arm1")), (Names{"arm1"}));
    EXPECT_EQ(graph.namespaces(), (Names{"rig", "rig:left"}));
}

TEST(Wildcards, StarsMayMatchNothingAndBacktrack)
{
    EXPECT_TRUE(matchesWildcard("*", ""));
    EXPECT_TRUE(matchesWildcard("a*b*c", "axbxbxc"));
    EXPECT_TRUE(matchesWildcard("**a", "a"));
    EXPECT_FALSE(matchesWildcard("a*b", "axbc"));
    EXPECT_FALSE(matchesWildcard("?", ""));
    EXPECT_TRUE(matchesWildcard("*ab", "aab"));
}

TEST_F(GraphTest, PathsOfAttributesLeadToPlugsAndBackToText)
{
    make("holder", "h").aliases = {{"smile", "weight[3]"}};
    const struct {
        const char* given;
        const char* name;
        const char* filePath;
    } kRows[] = {
        {"h.weight[3]", "h.weight[3]", ".w[3]"},
        {"h.smile", "h.weight[3]", ".w[3]"},
        {"h.wl[2].ws[7]", "h.weightList[2].weights[7]", ".wl[2].ws[7]"},
        {"h.moveX", "h.moveX", ".mx"},
        {"h.m.my", "h.moveY", ".my"},
        {"h.deep.group[2].id", "h.deep[0].group[2].id", ".d[0].g[2].id"},
        {"h.weights", "h.weightList[-1].weights", ".wl[-1].ws"},
        {"h.weightList", "h.weightList", ".wl"},
    };
    for (const auto& row : kRows) {
        EXPECT_EQ(plug(row.given).name(), row.name);
        EXPECT_EQ(plug(row.given).attributePath(false), row.filePath);
    }
    EXPECT_EQ(errorOf([&] { plug("h.nothing"); }), "No attribute 'nothing' on node 'h'.");
    for (const char* bad : {"h.weight[", "h.weight[x]", "h.weight[1][2]", "h.move[1]", "h.weight[1].x",
                            "h.weight[4294967295]", "h.move..mx", "h", "h."})
        EXPECT_THROW(plug(bad), Error) << bad;
}

TEST_F(GraphTest, AttributesThatOnlyAFileNamesAreKeptAndConnectable)
{
    Node& keeper = graph.create(graph.types().findOrKeep("mystery", false, false), "m");
    EXPECT_FALSE(keeper.type().known);
    make("adder", "x");
    graph.connect(plug("x.sum"), graph.keepAttribute(keeper, "in.list[2].value"));
    graph.connect(plug("x.sum"), graph.keepAttribute(keeper, "many[4]"));
    EXPECT_EQ(plug("m.in.list[2].value").source(), plug("x.sum"));
    EXPECT_EQ(plug("m.in.list[2].value").attributePath(false), ".in.list[2].value");
    EXPECT_EQ(graph.nextAvailable(plug("m.many")), 5u);
    EXPECT_EQ(graph.keepAttribute(keeper, "many[4]"), plug("m.many[4]")) << "the same again";
}
