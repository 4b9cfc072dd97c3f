// The deformer with two weight maps: what each does, and how tools see its attributes.
#include "graph/graph.h"
#include "nodes/geometry.h"
#include "support/hostFixture.h"
#include "support/weights.h"
#include "types/api.h"

#include <maya/MFnDependencyNode.h>
#include <maya/MFnWeightGeometryFilter.h>
#include <maya/MPlug.h>

namespace {

using Imath::V3d;

class MaskedOffset : public testing_support::HostTest {
public:
    V3d point(const std::string& shape, std::size_t i)
    {
        return host::shapeGeometry(session.graph().get(shape))->points().at(i);
    }
    MPlug attribute(const char* name)
    {
        MFnDependencyNode node(host::Api::wrap(&session.graph().get("maskedOffset1")));
        MStatus status;
        MPlug plug = node.findPlug(name, false, &status);
        EXPECT_TRUE(status) << name;
        return plug;
    }
};

TEST_F(MaskedOffset, BothMapsScaleTheOffsetOfTheirGeometry)
{
    mel("polyPlane -n a -sx 1 -sy 1; polyPlane -n b -sx 1 -sy 1");
    const std::string start = testing_support::sceneText(session);
    mel("select a.vtx[0:2] b; maskedOffset -o 1 -2 4");
    const V3d offset(1, -2, 4), zero(-0.5, 0, 0.5), three(0.5, 0, -0.5);
    EXPECT_EQ(point("aShape", 0), zero + offset);
    EXPECT_EQ(point("aShape", 3), three);
    EXPECT_EQ(point("bShape", 3), three + offset);
    mel("setAttr maskedOffset1.maskList[1].mask[3] 0.25; percent -v 0.5 maskedOffset1 b.vtx[3]");
    EXPECT_EQ(point("bShape", 3), three + offset * 0.125);
    EXPECT_EQ(point("bShape", 0), zero + offset);
    EXPECT_EQ(point("aShape", 0), zero + offset);
    mel("setAttr maskedOffset1.strength 0.5; setAttr maskedOffset1.envelope 0.5");
    EXPECT_EQ(point("aShape", 0), zero + offset * 0.25);
    mel("setAttr maskedOffset1.levels[2] 9; setAttr maskedOffset1.plainMask.plainMaskValues[0] 9;"
        "setAttr maskedOffset1.layerList[0].layerGeometry[0].layerMask[0] 9;"
        "setAttr maskedOffset1.zoneList[0].zones[0].zoneWeight 9; maskedOffset -e -o 0 0 8 maskedOffset1");
    EXPECT_EQ(point("aShape", 0), zero + V3d(0, 0, 2));
    EXPECT_EQ(melFloats("maskedOffset -q -o maskedOffset1"), (std::vector<double>{0, 0, 8}));
    mel("undo; undo; undo; undo; undo; undo; undo; undo; undo; undo; undo");
    EXPECT_EQ(testing_support::sceneText(session), start);
}

TEST_F(MaskedOffset, OneAttributeIsAMapAndItsLookAlikesAreNot)
{
    mel("polyPlane -n a -sx 1 -sy 1; maskedOffset a");
    const MPlug map = attribute("mask");
    EXPECT_TRUE(map.isArray());
    EXPECT_TRUE(map.isChild());
    EXPECT_TRUE(map.parent().isElement());
    EXPECT_FALSE(map.parent().array().isChild());
    EXPECT_EQ(map.elementByLogicalIndex(0).numChildren(), 0u);

    EXPECT_FALSE(attribute("strength").isArray());
    EXPECT_TRUE(attribute("levels").isArray());
    EXPECT_FALSE(attribute("levels").isChild());
    EXPECT_FALSE(attribute("plainMaskValues").parent().isElement());
    EXPECT_TRUE(attribute("layerMask").parent().array().isChild());
    EXPECT_EQ(attribute("zones").elementByLogicalIndex(0).numChildren(), 1u);

    MPlug chosen = map;
    ASSERT_TRUE(chosen.selectAncestorLogicalIndex(0, attribute("maskList").attribute()));
    EXPECT_EQ(chosen.elementByLogicalIndex(2).asFloat(), 1.0f);
    ASSERT_TRUE(chosen.elementByLogicalIndex(2).setFloat(0.5f));
    mel("setAttr maskedOffset1.offset 0 4 0");
    EXPECT_EQ(point("aShape", 2).y, 2.0);
}

} // namespace
