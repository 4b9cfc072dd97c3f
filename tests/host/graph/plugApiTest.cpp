#include "graphFixture.h"

#include "types/api.h"

#include <maya/MFnAttribute.h>
#include <maya/MFnDependencyNode.h>
#include <maya/MIntArray.h>
#include <maya/MPlug.h>
#include <maya/MPlugArray.h>
#include <maya/MStringArray.h>

#include <limits>

using namespace host;

namespace {

class PlugApiTest : public GraphTest {
public:
    PlugApiTest() : holder(make("holder", "h")), object(Api::wrap(&holder)), node(object) {}

    std::string nameOf(const MPlug& handle) { return Api::text(handle.name()); }

    Node& holder;
    MObject object;
    MFnDependencyNode node;
    MStatus status;
};

} // namespace

TEST_F(PlugApiTest, ReadingAMissingElementGivesTheDefaultAndMakesItExist)
{
    MPlug weights = node.findPlug("weightList", true).elementByLogicalIndex(2).child(0u);
    EXPECT_TRUE(weights.isArray());
    EXPECT_EQ(weights.numElements(), 0u);
    const MPlug missing = weights.elementByLogicalIndex(7, &status);
    EXPECT_EQ(status, MStatus::kSuccess);
    EXPECT_FALSE(missing.isArray());
    EXPECT_TRUE(missing.isElement());
    EXPECT_EQ(weights.numElements(), 0u);
    EXPECT_EQ(missing.asFloat(&status), 1.0f);
    EXPECT_EQ(status, MStatus::kSuccess);
    EXPECT_EQ(weights.numElements(), 1u);
    EXPECT_EQ(weights.elementByLogicalIndex(3).setFloat(0.25f), MStatus::kSuccess);
    EXPECT_EQ(weights.elementByPhysicalIndex(0).logicalIndex(), 3u) << "rank among the existing";
    EXPECT_EQ(weights.elementByPhysicalIndex(1).logicalIndex(), 7u);
    EXPECT_TRUE(weights.elementByPhysicalIndex(2, &status).isNull());
    EXPECT_EQ(status, MStatus::kFailure);
    MIntArray indices;
    EXPECT_EQ(weights.getExistingArrayAttributeIndices(indices), 2u);
    EXPECT_EQ(indices[1], 7);
}

TEST_F(PlugApiTest, AChildOfAnArrayIsFoundWithoutAnIndexAbove)
{
    MPlug weights = node.findPlug("weights", true, &status);
    EXPECT_EQ(status, MStatus::kSuccess);
    EXPECT_TRUE(weights.isArray());
    EXPECT_TRUE(weights.isChild());
    EXPECT_FALSE(weights.isElement());
    EXPECT_TRUE(weights.parent().isElement());
    EXPECT_FALSE(weights.parent().isArray());
    EXPECT_FALSE(weights.parent().array().isChild());
    EXPECT_EQ(nameOf(weights.parent().array()), "h.weightList");
    EXPECT_EQ(weights.elementByLogicalIndex(0).setFloat(1.0f), MStatus::kFailure) << "which geometry?";
}

TEST_F(PlugApiTest, AnAncestorsIndexIsChosenByItsAttribute)
{
    MPlug weights = node.findPlug("weights", true);
    const MObject list = MFnAttribute(weights.attribute()).parent();
    EXPECT_EQ(list, node.attribute("weightList"));
    EXPECT_EQ(weights.selectAncestorLogicalIndex(4, list), MStatus::kSuccess);
    EXPECT_TRUE(weights.isArray());
    EXPECT_EQ(nameOf(weights), "h.weightList[4].weights");
    MPlug own = weights;
    EXPECT_EQ(own.selectAncestorLogicalIndex(6), MStatus::kSuccess);
    EXPECT_EQ(nameOf(own), "h.weightList[4].weights[6]") << "a null attribute means the plug's own";
    EXPECT_EQ(own.setFloat(0.5f), MStatus::kSuccess);
    EXPECT_EQ(number("h.weightList[4].weights[6]"), 0.5);
    EXPECT_EQ(own.selectAncestorLogicalIndex(1, node.attribute("plain")), MStatus::kFailure);
    MPlug plain = node.findPlug("plain", true);
    EXPECT_EQ(plain.selectAncestorLogicalIndex(1), MStatus::kFailure) << "no array";
}

TEST_F(PlugApiTest, AnglesAreSpokenInRadiansAndOtherNumbersAsTheyAre)
{
    MPlug turn = node.findPlug("turn", true);
    set("h.turn", 90);
    EXPECT_NEAR(turn.asDouble(), 1.5707963267948966, 1e-15);
    EXPECT_EQ(turn.setDouble(3.141592653589793), MStatus::kSuccess);
    EXPECT_NEAR(number("h.turn"), 180, 1e-12);
    MPlug count = node.findPlug("c", true);
    EXPECT_EQ(count.setInt(40), MStatus::kSuccess);
    EXPECT_EQ(count.asShort(), 40);
    EXPECT_TRUE(count.asBool());
    MPlug plain = node.findPlug("plain", true);
    plain.setDouble(-2.9);
    EXPECT_EQ(plain.asInt(), -2);
    plain.setDouble(1e20);
    EXPECT_EQ(plain.asInt(), 2147483647);
    MPlug label = node.findPlug("label", true);
    EXPECT_EQ(label.setString("word"), MStatus::kSuccess);
    EXPECT_EQ(label.asString(), MString("word"));
    EXPECT_EQ(label.asDouble(&status), 0.0);
    EXPECT_EQ(status, MStatus::kFailure);
    EXPECT_EQ(label.setDouble(1.0), MStatus::kFailure);
}

TEST_F(PlugApiTest, LockedAndFedPlugsRefuseToBeSet)
{
    make("adder", "x");
    connect("x.sum", "h.weight[1]");
    plug("h.plain").setLocked(true);
    MPlug fed = node.findPlug("weight", true).elementByLogicalIndex(1);
    EXPECT_EQ(fed.setDouble(1.0), MStatus::kFailure);
    EXPECT_EQ(fed.asDouble(), 10.0);
    MPlug free = node.findPlug("weight", true).elementByLogicalIndex(2);
    EXPECT_EQ(free.setDouble(1.0), MStatus::kSuccess) << "its neighbour is fed";
    disconnect("x.sum", "h.weight[1]");
    EXPECT_EQ(fed.setDouble(1.0), MStatus::kSuccess);
    connect("x.sum", "h.weight[1]");
    EXPECT_EQ(fed.setDouble(1.0), MStatus::kFailure) << "fed again, after it was written";
    MPlug lockedPlug = node.findPlug("plain", true);
    EXPECT_TRUE(lockedPlug.isLocked());
    EXPECT_EQ(lockedPlug.setDouble(1.0), MStatus::kFailure);
    EXPECT_EQ(number("h.plain"), 0);

    MPlugArray ends;
    EXPECT_TRUE(fed.connectedTo(ends, true, false));
    EXPECT_EQ(nameOf(ends[0]), "x.sum");
    EXPECT_FALSE(fed.connectedTo(ends, false, true));
    MPlug sum = Api::wrap(plug("x.sum"));
    EXPECT_TRUE(sum.connectedTo(ends, false, true));
    EXPECT_EQ(ends[0], fed);
    EXPECT_TRUE(sum.isConnected());
}

TEST_F(PlugApiTest, AttributesAreLookedUpByEveryName)
{
    holder.aliases = {{"smile", "weight[8]"}, {"frown", "weight[2]"}};
    EXPECT_EQ(nameOf(node.findPlug("smile", true)), "h.weight[8]");
    EXPECT_EQ(nameOf(node.findPlug("mx", true)), "h.moveX");
    EXPECT_EQ(nameOf(node.findPlug(node.attribute("moveY"), true)), "h.moveY");
    EXPECT_TRUE(node.findPlug("nothing", true, &status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
    const Node& other = make("adder", "x");
    EXPECT_TRUE(node.findPlug(Api::wrap(other.findAttribute("a")), true, &status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter) << "an attribute of another type";
    EXPECT_TRUE(MPlug(object, Api::wrap(other.findAttribute("a"))).isNull());
    EXPECT_TRUE(node.hasAttribute("weightList"));
    EXPECT_FALSE(node.hasAttribute("nothing"));

    MStringArray aliases;
    EXPECT_TRUE(node.getAliasList(aliases));
    ASSERT_EQ(aliases.length(), 4u);
    EXPECT_EQ(aliases[0], MString("smile")) << "in the order in which they were made";
    EXPECT_EQ(aliases[1], MString("weight[8]"));
    MFnDependencyNode plainNode(Api::wrap(&other));
    EXPECT_FALSE(plainNode.getAliasList(aliases));
    EXPECT_EQ(aliases.length(), 0u);
}

TEST_F(PlugApiTest, NullPlugsFailInEveryWay)
{
    MPlug none;
    EXPECT_TRUE(none.isNull());
    EXPECT_FALSE(none.isArray(&status));
    EXPECT_EQ(status, MStatus::kFailure);
    EXPECT_EQ(none.setFloat(1.0f), MStatus::kFailure);
    EXPECT_EQ(none.asDouble(&status), 0.0);
    EXPECT_EQ(status, MStatus::kFailure);
    EXPECT_TRUE(none.child(0u, &status).isNull());
    EXPECT_TRUE(none.parent().isNull());
    EXPECT_TRUE(none.attribute().isNull());
    EXPECT_EQ(none.selectAncestorLogicalIndex(0), MStatus::kFailure);
    EXPECT_EQ(none, MPlug());
    EXPECT_NE(none, node.findPlug("plain", true));
}

TEST_F(PlugApiTest, ValuesOfEveryTypeGoInAndOut)
{
    MPlug list = node.findPlug("weightList", &status);
    EXPECT_TRUE(status);
    MPlug weights = list.elementByLogicalIndex(4).child(0u);
    weights.elementByLogicalIndex(6).setValue(2.75);
    MPlug plug = weights[0];
    EXPECT_EQ(plug.logicalIndex(), 6u) << "the index in brackets is the physical one";
    EXPECT_EQ(nameOf(plug), "h.weightList[4].weights[6]");
    MObject attribute = weights.attribute();
    EXPECT_TRUE(list[0][attribute] == weights);
    EXPECT_FALSE(!plug);
    EXPECT_TRUE(!MPlug());

    double d = 0;
    float f = 0;
    int i = 0;
    short s = 0;
    char c = 0;
    bool b = false;
    MInt64 l = 0;
    EXPECT_TRUE(plug.getValue(d) && plug.getValue(f) && plug.getValue(i) && plug.getValue(s) &&
                plug.getValue(c) && plug.getValue(b) && plug.getValue(l));
    EXPECT_EQ(d, 2.75);
    EXPECT_EQ(f, 2.75f);
    EXPECT_EQ(std::vector<int>({2, 2, 2, 1, 2}), std::vector<int>({i, s, c, b, static_cast<int>(l)}));
    for (const MStatus& set : {plug.setValue(3), plug.setValue(short(3)), plug.setValue(char(3)),
                               plug.setValue(MInt64(3)), plug.setValue(3.0f)}) {
        EXPECT_TRUE(set);
        EXPECT_EQ(plug.asInt64(), 3);
    }
    plug.setValue(true);
    EXPECT_EQ(plug.asDouble(), 1.0);
    plug.setValue(1e30);
    EXPECT_EQ(plug.asInt64(), std::numeric_limits<MInt64>::max()) << "as far as it goes";
    d = 7;
    EXPECT_FALSE(MPlug().getValue(d));
    EXPECT_EQ(d, 7) << "left alone";
    EXPECT_TRUE(node.findPlug("nothing", &status).isNull());
    EXPECT_EQ(status, MStatus::kInvalidParameter);
}
